#include "tests/support/input_real.h"

#include <gtest/gtest.h>

namespace sylvex {

namespace {

void SendKey(WORD key, WORD scan, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

}  // namespace

HWND Stage()
{
    static HWND const stage = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"Stage", WS_POPUP | WS_VISIBLE, 60, 60, 820,
                                              420, nullptr, nullptr, nullptr, nullptr);
    return stage;
}

RealInput::~RealInput()
{
    SetDoubleClickTime(m_doubleClick);
}

void RealInput::Serve(MSG& message)
{
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void RealInput::Wait(unsigned milliseconds)
{
    const auto end = GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            Serve(message);
        const auto now = GetTickCount64();
        if (now >= end) return;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
}

void RealInput::MoveTo(POINT point)
{
    SetCursorPos(point.x, point.y);
    Wait(15);
}

void RealInput::Buttons(std::initializer_list<DWORD> flags)
{
    for (const DWORD flag : flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        SendInput(1, &input, sizeof input);
    }
    Wait(15);
}

void RealInput::Click(POINT point)
{
    MoveTo(point);
    Button(MOUSEEVENTF_LEFTDOWN);
    Button(MOUSEEVENTF_LEFTUP);
}

void RealInput::Key(WORD key)
{
    const WORD scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    for (const DWORD flag : {0u, static_cast<unsigned>(KEYEVENTF_KEYUP)}) {
        SendKey(key, scan, flag);
        Wait(10);
    }
}

void RealInput::Type(const std::wstring& text)
{
    for (const wchar_t character : text) {
        for (const DWORD flag : {0u, static_cast<unsigned>(KEYEVENTF_KEYUP)})
            SendKey(0, static_cast<WORD>(character), KEYEVENTF_UNICODE | flag);
        Wait(5);
    }
}

RECT RealInput::PlaceOf(HTREEITEM row, bool label) const
{
    // The message takes the item in the place of its answer.
    union {
        HTREEITEM item;
        RECT place;
    } question{row};
    EXPECT_TRUE(Send(TVM_GETITEMRECT, label, reinterpret_cast<LPARAM>(&question))) << "the row is not in view";
    return question.place;
}

std::wstring RealInput::RowText(HTREEITEM row) const
{
    wchar_t text[MAX_PATH] = {};
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_TEXT;
    item.hItem = row;
    item.pszText = text;
    item.cchTextMax = MAX_PATH;
    Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return text;
}

HWND RealInput::Edit() const
{
    return reinterpret_cast<HWND>(Send(TVM_GETEDITCONTROL, 0, 0));
}

std::wstring RealInput::EditText() const
{
    wchar_t text[MAX_PATH] = {};
    GetWindowTextW(Edit(), text, MAX_PATH);
    return text;
}

std::string RealInput::LeftOver() const
{
    std::string left;
    if (GetCapture()) left += "capture ";
    if (ImageList_GetDragImage(nullptr, nullptr)) left += "picture ";
    if (IsWindow(Tree()) && Send(TVM_GETNEXTITEM, TVGN_DROPHILITE, 0)) left += "highlight ";
    return left;
}

}  // namespace sylvex
