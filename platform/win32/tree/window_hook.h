#pragma once

#include <windows.h>

#include <optional>

namespace sylvex {

/// Sees the messages of a window before the window does. A plain replacement of the window procedure with a table of
/// our own: the platform's helper looks up window properties for each message, which costs more than most messages.
class WindowHook {
public:
    virtual ~WindowHook() = default;
    /// The answer, or nothing to let the message go on. Called on the window's thread; must not throw.
    virtual std::optional<LRESULT> OnHooked(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// Puts the hook before the window; false when the window cannot be hooked.
    static bool Attach(HWND window, WindowHook& hook);
    /// Takes it away again; nothing when it is not there. A window that is destroyed loses its hooks by itself.
    static void Detach(HWND window, WindowHook& hook) noexcept;
};

}  // namespace sylvex
