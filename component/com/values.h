#pragma once

#include "component/com/com.h"

namespace sylvex {

inline VARIANT_BOOL BoolOf(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

/// A text that the caller owns; throws std::bad_alloc.
inline BSTR TextOf(std::wstring_view text)
{
    return Bstr(text).Detach();
}

/// A handle as automation carries it: its lower 32 bits say it all.
inline LONG LongOf(std::uintptr_t handle)
{
    return static_cast<LONG>(handle);
}

/// Any value as a text, empty when it was left out; raises 13 when it has none.
std::wstring TextOf(const VARIANT& value);

/// Any numeric value as a whole number; raises 13 when it is none, 35600 when it is out of range.
long IndexOf(const VARIANT& value);

}  // namespace sylvex
