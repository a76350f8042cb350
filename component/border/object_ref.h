#pragma once

#include "component/border/border.h"
#include "platform/types.h"

namespace sylvex {

/// An object of the host as the portable layers carry it (a font, a picture); null for null.
ObjectRef ReferTo(IUnknown* object);

/// The object behind a reference that ReferTo() made of one; empty for any other.
ComPtr<IUnknown> ObjectBehind(const ObjectRef& reference);

/// The same as one interface; empty when the object does not have it.
template <class Interface>
ComPtr<Interface> Behind(const ObjectRef& reference)
{
    return ObjectBehind(reference).As<Interface>();
}

/// A value of the host (a node's tag) as the portable layers carry it; null for an empty one. Throws ComError.
ObjectRef ReferTo(const VARIANT& value);

/// The value behind a reference that ReferTo() made of one; empty for any other.
Variant ValueBehind(const ObjectRef& reference);

}  // namespace sylvex
