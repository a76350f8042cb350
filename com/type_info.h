#pragma once

#include "com/bstr.h"

#include <oaidl.h>

namespace sylvex {

/// The name of a type, or of one of its members; empty when it tells none.
inline std::wstring NameOf(ITypeInfo& info, MEMBERID member = MEMBERID_NIL)
{
    Bstr name;
    return SUCCEEDED(info.GetDocumentation(member, name.Put(), nullptr, nullptr, nullptr)) ? name.Text()
                                                                                           : std::wstring();
}

}  // namespace sylvex
