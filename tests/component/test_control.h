#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <olectl.h>

#include <gtest/gtest.h>

#include <string>

#include "SylvexControl_h.h"
#include "tests/component/automation.h"

namespace sylvex::test {

/// A new control, made by the component's own class factory.
ComPtr<::_Sylvex> NewControl();

/// The window of the control's tree.
HWND TreeOf(const ComPtr<::_Sylvex>& control);

/// A list-view window of a host.
struct ListViewWindow {
    explicit ListViewWindow(DWORD style = 0)
        : window(CreateWindowExW(0, WC_LISTVIEWW, L"List", WS_OVERLAPPEDWINDOW | LVS_REPORT | style, 0, 0, 400, 300,
                                 nullptr, nullptr, nullptr, nullptr))
    {
    }
    ListViewWindow(const ListViewWindow&) = delete;
    ListViewWindow& operator=(const ListViewWindow&) = delete;
    ~ListViewWindow() { DestroyWindow(window); }

    const HWND window;
};

/// A font's name, size and weight as the system gives them; "none" for null.
std::string TextOf(IFontDisp* font);

/// A property's value; a font's as above, a picture's as its kind.
std::string TextOf(const Value& value);

/// A font object; `size` in points.
ComPtr<IFontDisp> NewFont(const wchar_t* name, int size, bool bold = false);

/// A picture object that holds an icon.
ComPtr<IPictureDisp> NewPicture();

/// Runs the message loop until nothing waits.
void DrainMessages();

}  // namespace sylvex::test
