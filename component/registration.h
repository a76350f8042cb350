#pragma once

#include <windows.h>

namespace sylvex {

/// Who sees the registered class: everybody on the machine (needs administrator rights), or this user only.
enum class Scope { Machine, User };

/// Registers the class and the type library of this file; removes what it wrote when a part of it fails.
HRESULT RegisterComponent(Scope scope) noexcept;

/// Removes what RegisterComponent() wrote, whichever file was registered; does nothing when nothing is registered. What
/// both word sizes share (program identifiers, type library, interfaces) stays while the other's class is registered.
HRESULT UnregisterComponent(Scope scope) noexcept;

}  // namespace sylvex
