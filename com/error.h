#pragma once

#include <windows.h>

namespace sylvex {

/// A failure that is known by its HRESULT, which must be a failure code.
struct ComError {
    HRESULT result;
};

inline void Check(HRESULT result)
{
    if (FAILED(result)) throw ComError{result};
}

/// The object behind an [out] or [in, out] pointer; throws ComError(E_POINTER) for null.
template <class Value>
Value& Checked(Value* pointer)
{
    if (!pointer) throw ComError{E_POINTER};
    return *pointer;
}

}  // namespace sylvex
