#include "platform/win32/box_check.h"

#include <algorithm>
#include <vector>

#include "platform/runtime_error.h"

namespace sylvex {
namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX;
// Beyond the numbers that end a message box.
constexpr int kIdentifier = 0x5001;

// The box's children, in pixels of its client area.
struct Contents {
    std::vector<HWND> buttons;
    RECT buttonsPlace{};
    LONG left = 0;
    SIZE client{};
};

RECT PlaceIn(HWND box, HWND child)
{
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

Contents ContentsOf(HWND box)
{
    Contents contents;
    RECT client{};
    GetClientRect(box, &client);
    contents.client = {client.right, client.bottom};
    contents.left = client.right;
    for (auto* child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto place = PlaceIn(box, child);
        if (!IsWindowVisible(child) || place.right <= place.left) continue;
        contents.left = std::min(contents.left, place.left);
        wchar_t name[16] = {};
        GetClassNameW(child, name, 16);
        if (lstrcmpiW(name, L"Button") != 0) continue;
        // With an empty rectangle the union is the other one.
        const auto before = contents.buttonsPlace;
        UnionRect(&contents.buttonsPlace, &before, &place);
        contents.buttons.push_back(child);
    }
    return contents;
}

SIZE SizeOfCheck(HWND box, HFONT font, const std::wstring& text)
{
    RECT extent{};
    auto* const device = GetDC(box);
    auto* const before = SelectObject(device, font);
    DrawTextW(device, text.c_str(), static_cast<int>(text.size()), &extent, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(device, before);
    ReleaseDC(box, device);
    const LONG glyph = GetSystemMetrics(SM_CXMENUCHECK);
    // Half a glyph between box and text, and room for the focus rectangle.
    return {extent.right + glyph * 2, std::max(extent.bottom, glyph) + 4};
}

// Buttons in the middle stay in the middle; those of newer systems keep their distance from the right edge.
void ShiftButtons(HWND box, const Contents& contents, LONG wider)
{
    const auto rightGap = contents.client.cx - contents.buttonsPlace.right;
    const auto shift = rightGap * 2 < contents.buttonsPlace.left ? wider : wider / 2;
    for (auto* const button : contents.buttons) {
        const auto place = PlaceIn(box, button);
        SetWindowPos(button, nullptr, static_cast<int>(place.left + shift), static_cast<int>(place.top), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

// Makes the box's client area larger; gives how much wider it has become, at most as wide as the screen.
LONG Grow(HWND box, LONG wider, LONG higher)
{
    RECT place{};
    GetWindowRect(box, &place);
    MONITORINFO facts{};
    facts.cbSize = sizeof facts;
    if (GetMonitorInfoW(MonitorFromWindow(box, MONITOR_DEFAULTTONEAREST), &facts)) {
        const auto room = facts.rcWork.right - facts.rcWork.left - (place.right - place.left);
        wider = std::clamp<LONG>(wider, 0, std::max<LONG>(room, 0));
    }
    SetWindowPos(box, nullptr, 0, 0, static_cast<int>(place.right - place.left + wider),
                 static_cast<int>(place.bottom - place.top + higher), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return wider;
}

}  // namespace

Win32BoxCheck::Win32BoxCheck(HWND box, const std::wstring& text) : m_box(box)
{
    const auto contents = ContentsOf(box);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(box, WM_GETFONT, 0, 0));
    const auto size = SizeOfCheck(box, font, text);
    const auto margin = std::max<LONG>(contents.client.cy - contents.buttonsPlace.bottom, 4);
    const auto wider = Grow(box, std::max<LONG>(contents.left * 2 + size.cx - contents.client.cx, 0), size.cy + margin);
    if (wider > 0) ShiftButtons(box, contents, wider);
    const auto width = std::min<LONG>(size.cx, contents.client.cx + wider - contents.left);
    m_check = CreateWindowExW(0, L"Button", text.c_str(), kStyle, static_cast<int>(contents.left),
                              static_cast<int>(contents.buttonsPlace.bottom + margin), static_cast<int>(width),
                              static_cast<int>(size.cy), box, HandleOf<HMENU>(kIdentifier), OwnModule(), nullptr);
    if (!m_check) throw OutOfMemory();
    SendMessageW(m_check, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SetWindowSubclass(box, &Watch, kIdentifier, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(box, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(box, nullptr, TRUE);
}

Win32BoxCheck::~Win32BoxCheck()
{
    if (IsWindow(m_box)) RemoveWindowSubclass(m_box, &Watch, kIdentifier);
}

bool Win32BoxCheck::Ticked()
{
    if (IsWindow(m_check)) m_ticked = SendMessageW(m_check, BM_GETCHECK, 0, 0) == BST_CHECKED;
    return m_ticked;
}

LRESULT CALLBACK Win32BoxCheck::Watch(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR self)
{
    auto& check = *reinterpret_cast<Win32BoxCheck*>(self);
    switch (message) {
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            // Newer systems paint the text's part of a box white, and would do so below the buttons.
            if (reinterpret_cast<HWND>(lParam) != check.m_check) break;
            SetBkColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_3DFACE));
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
        case WM_COMMAND:
            if (reinterpret_cast<HWND>(lParam) != check.m_check) break;
            check.Ticked();
            return 0;
        case WM_DESTROY:
            // The last moment; a person may be faster than any timer.
            check.Ticked();
            RemoveWindowSubclass(box, &Watch, kIdentifier);
            break;
        default:
            break;
    }
    return DefSubclassProc(box, message, wParam, lParam);
}

}  // namespace sylvex
