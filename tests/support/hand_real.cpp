#include <windows.h>

#include <commctrl.h>

#include "tests/support/hand.h"

namespace sylvex {

namespace {

/// Mouse and keyboard through the system's own input queue.
class RealHand final : public HandTools {
public:
    explicit RealHand(Scene& scene) : m_tree(reinterpret_cast<HWND>(scene.control().Tree().hWnd()))
    {
        SetForegroundWindow(GetAncestor(m_tree, GA_ROOT));
        SetFocus(m_tree);
        // A hand that works this fast would double-click all the time.
        SetDoubleClickTime(1);
        Wait(30);
    }
    ~RealHand() override { SetDoubleClickTime(m_doubleClick); }
    void Press(Point where, short button) override
    {
        MoveTo(where);
        m_button = button;
        Button(button == 1 ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    }
    void MoveTo(Point where) override
    {
        POINT point{where.x, where.y};
        ClientToScreen(m_tree, &point);
        SetCursorPos(point.x, point.y);
        Wait(15);
    }
    int MovesTold() override { return m_movesTold; }
    void Release() override
    {
        Button(std::exchange(m_button, short{1}) == 1 ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
    }
    void ReleaseUnheard() override
    {
        Send(std::exchange(m_button, short{1}) == 1 ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
        Sleep(50);
    }
    void PressKey(short key) override
    {
        for (const DWORD flag : {0u, static_cast<unsigned>(KEYEVENTF_KEYUP)}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = static_cast<WORD>(key);
            input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
            input.ki.dwFlags = flag;
            SendInput(1, &input, sizeof input);
            Wait(15);
        }
    }
    void PressEscapeElsewhere() override
    {
        const HWND other = CreateWindowW(WC_EDITW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, GetParent(m_tree), nullptr,
                                         GetModuleHandleW(nullptr), nullptr);
        SetFocus(other);
        PressKey(VK_ESCAPE);
        SetFocus(m_tree);
        DestroyWindow(other);
    }
    void Wait(int milliseconds) override
    {
        const auto end = GetTickCount64() + static_cast<unsigned>(milliseconds);
        for (;;) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (message.message == WM_MOUSEMOVE && message.hwnd == m_tree) ++m_movesTold;
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            const auto now = GetTickCount64();
            if (now >= end) return;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
        }
    }
    void Type(const std::wstring& text) override
    {
        SetWindowTextW(Edit(), text.c_str());
        PressKey(VK_RETURN);
    }
    std::wstring Label() override
    {
        if (!Edit()) return L"(closed)";
        wchar_t text[MAX_PATH] = {};
        GetWindowTextW(Edit(), text, MAX_PATH);
        return text;
    }
    std::string LeftOver() override
    {
        std::string left;
        if (GetCapture()) left += "capture ";
        if (ImageList_GetDragImage(nullptr, nullptr)) left += "picture ";
        if (IsWindow(m_tree) && SendMessageW(m_tree, TVM_GETNEXTITEM, TVGN_DROPHILITE, 0)) left += "highlight ";
        return left;
    }
    void LoseCapture() override { SendMessageW(m_tree, WM_CANCELMODE, 0, 0); }

private:
    HWND Edit() const { return reinterpret_cast<HWND>(SendMessageW(m_tree, TVM_GETEDITCONTROL, 0, 0)); }
    static void Send(DWORD flag)
    {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        SendInput(1, &input, sizeof input);
    }
    void Button(DWORD flag)
    {
        Send(flag);
        Wait(20);
    }

    HWND m_tree;
    UINT m_doubleClick = GetDoubleClickTime();
    short m_button = 1;
    int m_movesTold = 0;
};

}  // namespace

std::unique_ptr<HandTools> MakeHandTools(Scene& scene)
{
    return std::make_unique<RealHand>(scene);
}

}  // namespace sylvex
