#pragma once

#include <string>

#include "platform/box_tools.h"
#include "platform/win32/handles.h"

namespace sylvex {

/// A check box below the buttons of a message box of the platform's, in the box's own font.
class Win32BoxCheck : public BoxCheck {
public:
    /// Makes the check box, and the box larger. Raises 7 when the platform makes no window.
    Win32BoxCheck(HWND box, const std::wstring& text);
    Win32BoxCheck(const Win32BoxCheck&) = delete;
    Win32BoxCheck& operator=(const Win32BoxCheck&) = delete;
    ~Win32BoxCheck() override;
    WindowHandle Handle() const override { return NumberOf(m_check); }
    bool Ticked() override;

private:
    static LRESULT CALLBACK Watch(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR self);

    HWND m_box;
    HWND m_check = nullptr;
    bool m_ticked = false;
};

}  // namespace sylvex
