#include <windows.h>

#include <commctrl.h>

#include "tests/support/hand.h"
#include "tests/support/input_real.h"

namespace sylvex {

namespace {

/// The real hands, told points of the tree.
class RealHand final : public HandTools, private RealInput {
public:
    explicit RealHand(Scene& scene) : m_tree(reinterpret_cast<HWND>(scene.control().Tree().hWnd()))
    {
        SetForegroundWindow(GetAncestor(m_tree, GA_ROOT));
        SetFocus(m_tree);
        NeverDoubleClick();
        RealInput::Wait(30);
    }
    void Press(Point where, short button) override
    {
        MoveTo(where);
        m_release = button == 1 ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP;
        Button(button == 1 ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    }
    void MoveTo(Point where) override
    {
        POINT point{where.x, where.y};
        ClientToScreen(m_tree, &point);
        RealInput::MoveTo(point);
    }
    int MovesTold() override { return m_movesTold; }
    void Release() override { Button(std::exchange(m_release, MOUSEEVENTF_LEFTUP)); }
    void ReleaseUnheard() override
    {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = std::exchange(m_release, MOUSEEVENTF_LEFTUP);
        SendInput(1, &input, sizeof input);
        Sleep(50);
    }
    void PressKey(short key) override { Key(static_cast<WORD>(key)); }
    void PressEscapeElsewhere() override
    {
        const HWND other = CreateWindowW(WC_EDITW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, GetParent(m_tree), nullptr,
                                         GetModuleHandleW(nullptr), nullptr);
        SetFocus(other);
        PressKey(VK_ESCAPE);
        SetFocus(m_tree);
        DestroyWindow(other);
    }
    void Wait(int milliseconds) override { RealInput::Wait(static_cast<unsigned>(milliseconds)); }
    void Type(const std::wstring& text) override
    {
        SetWindowTextW(Edit(), text.c_str());
        PressKey(VK_RETURN);
    }
    std::wstring Label() override { return Edit() ? EditText() : L"(closed)"; }
    std::string LeftOver() override { return RealInput::LeftOver(); }
    void LoseCapture() override { Send(WM_CANCELMODE, 0, 0); }

private:
    HWND Tree() const override { return m_tree; }
    void Serve(MSG& message) override
    {
        if (message.message == WM_MOUSEMOVE && message.hwnd == m_tree) ++m_movesTold;
        RealInput::Serve(message);
    }

    HWND m_tree;
    DWORD m_release = MOUSEEVENTF_LEFTUP;
    int m_movesTold = 0;
};

}  // namespace

std::unique_ptr<HandTools> MakeHandTools(Scene& scene)
{
    return std::make_unique<RealHand>(scene);
}

}  // namespace sylvex
