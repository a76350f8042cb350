#pragma once

#include <string>

#include "component/border/border.h"
#include "platform/runtime_error.h"

namespace sylvex {

/// VT_I2 where the number fits, otherwise VT_I4.
Variant ShortValue(long number);
/// VT_UNKNOWN; adds a reference. Null: an object that is nothing.
Variant ObjectValue(IUnknown* object);

/// The value as a 32-bit number, a flag, a text; texts and numbers are converted. Throws ComError where that fails.
long NumberIn(const VARIANT& value);
bool FlagIn(const VARIANT& value);
std::wstring TextIn(const VARIANT& value);

/// The value as an object with the interface; empty for nothing. Raises 13 for anything else.
template <class Interface>
ComPtr<Interface> ObjectIn(const VARIANT& value)
{
    return Incoming<Interface>(value);
}

/// Whether two values of one property mean the same; fonts are compared by what they look like, all but texts and
/// objects by number (true is -1).
bool SameValue(const VARIANT& left, const VARIANT& right);

}  // namespace sylvex
