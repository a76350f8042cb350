#pragma once

#include <windows.h>

#include <unknwn.h>

namespace sylvex {

/// Creates the class factory of a class and queries it for `id`; CLASS_E_CLASSNOTAVAILABLE for any class but the
/// control.
HRESULT CreateClassFactory(REFCLSID classId, REFIID id, void** factory) noexcept;

}  // namespace sylvex
