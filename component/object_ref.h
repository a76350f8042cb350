#pragma once

#include "component/com.h"
#include "platform/types.h"

namespace sylvex {

/// An automation object as the portable layers carry it; null for null.
ObjectRef ReferTo(IUnknown* object);

/// The automation object behind a reference; empty for null and for a reference that holds a value instead.
ComPtr<IUnknown> ObjectBehind(const ObjectRef& reference);

/// The same as one interface; empty when the object has no such interface.
template <class Interface>
ComPtr<Interface> Behind(const ObjectRef& reference)
{
    return ObjectBehind(reference).As<Interface>();
}

/// Any value as the portable layers carry it; null for an empty value.
ObjectRef ReferTo(const VARIANT& value);

/// The value behind a reference; empty for null.
Variant ValueBehind(const ObjectRef& reference);

}  // namespace sylvex
