#include "platform/win32/tree/tree_input.h"

#include <windowsx.h>

#include <cstdlib>

#include "platform/win32/tree/tree_core.h"

namespace sylvex {
namespace {

constexpr short kLeft = 1;
constexpr short kRight = 2;
constexpr short kMiddle = 4;

bool IsDown(int key)
{
    return GetKeyState(key) < 0;
}

short ShiftOfKeys()
{
    return static_cast<short>((IsDown(VK_SHIFT) ? 1 : 0) | (IsDown(VK_CONTROL) ? 2 : 0) | (IsDown(VK_MENU) ? 4 : 0));
}

short ShiftOf(WPARAM mouseKeys)
{
    return static_cast<short>(((mouseKeys & MK_SHIFT) != 0 ? 1 : 0) | ((mouseKeys & MK_CONTROL) != 0 ? 2 : 0) |
                              (IsDown(VK_MENU) ? 4 : 0));
}

short ButtonsOf(WPARAM mouseKeys)
{
    return static_cast<short>(((mouseKeys & MK_LBUTTON) != 0 ? kLeft : 0) |
                              ((mouseKeys & MK_RBUTTON) != 0 ? kRight : 0) |
                              ((mouseKeys & MK_MBUTTON) != 0 ? kMiddle : 0));
}

// The button that a message is about, 0 for any other message of the mouse.
short ButtonOf(UINT message)
{
    if (message >= WM_LBUTTONDOWN && message <= WM_LBUTTONDBLCLK) return kLeft;
    if (message >= WM_RBUTTONDOWN && message <= WM_RBUTTONDBLCLK) return kRight;
    return message >= WM_MBUTTONDOWN && message <= WM_MBUTTONDBLCLK ? kMiddle : short{0};
}

bool IsRelease(UINT message)
{
    return message == WM_LBUTTONUP || message == WM_RBUTTONUP || message == WM_MBUTTONUP;
}

bool IsSecondPress(UINT message)
{
    return message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDBLCLK;
}

int KeyOf(short button)
{
    return button == kLeft ? VK_LBUTTON : button == kRight ? VK_RBUTTON : VK_MBUTTON;
}

Point PointOf(LPARAM where)
{
    return {GET_X_LPARAM(where), GET_Y_LPARAM(where)};
}

}  // namespace

std::optional<LRESULT> TreeInput::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) return OnMouse(message, wParam, lParam);
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST) return OnKey(message, wParam, lParam);
    if (message == WM_CAPTURECHANGED) {
        m_captureMoved = true;
        if (reinterpret_cast<HWND>(lParam) != m_core.Window()) m_captured = false;
    }
    return std::nullopt;
}

std::optional<LRESULT> TreeInput::OnMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto button = ButtonOf(message);
    if (button != 0 && IsRelease(message)) return OnReleased(button, message, wParam, lParam);
    if (button != 0) return OnPressed(button, message, wParam, lParam);
    if (message != WM_MOUSEMOVE) return std::nullopt;
    if ((m_down & kLeft) != 0 && IsDrag(PointOf(lParam))) m_dragged = true;
    const bool alive =
        m_core.Tell([&](TreeWindowListener& l) { l.MouseMove(ButtonsOf(wParam), ShiftOf(wParam), PointOf(lParam)); });
    return alive ? std::nullopt : std::optional<LRESULT>(0);
}

TreeInput::Press TreeInput::PressAt(LPARAM where)
{
    TVHITTESTINFO hit{};
    hit.pt = {GET_X_LPARAM(where), GET_Y_LPARAM(where)};
    m_core.Send(TVM_HITTEST, 0, ParameterOf(&hit));
    return {hit.hItem, m_core.rows.Caret(), hit.hItem ? hit.flags : 0};
}

LRESULT TreeInput::OnPressed(short button, UINT message, WPARAM wParam, LPARAM lParam)
{
    m_down = static_cast<short>(m_down | button);
    if (button == kLeft) {
        m_press = PressAt(lParam);
        m_pressedAt = PointOf(lParam);
        m_dragged = false;
    }
    // The second press of a double click is told as such and not as one more press.
    const bool alive = m_core.Tell([&](TreeWindowListener& l) {
        if (!IsSecondPress(message)) l.MouseDown(button, ShiftOf(wParam), PointOf(lParam));
        if (message == WM_LBUTTONDBLCLK) l.DoubleClicked();
    });
    if (!alive) return 0;
    if (button == kLeft && m_press.OnBox() && m_core.face.HasBoxes()) {
        // The tree must not flip the box by itself: the marks are the owner's.
        m_boxPressed = true;
        SetFocus(m_core.Window());
        // The focus may have ended an edit with all that comes of it, the release of the button included.
        if (m_core.Window() && IsDown(VK_LBUTTON)) Hold();
        return 0;
    }
    PressNative(button, message, wParam, lParam);
    return 0;
}

void TreeInput::PressNative(short button, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (button == kLeft) m_boxPressed = false;
    m_captureMoved = false;
    m_core.Send(message, wParam, lParam);
    if (!m_core.Window()) return;
    if (IsDown(KeyOf(button))) {
        Hold();
    } else if (m_captureMoved && (m_down & button) != 0) {
        // The tree waited for a drag in a loop of its own and took the release for itself.
        const auto where = GetMessagePos();
        POINT point{GET_X_LPARAM(where), GET_Y_LPARAM(where)};
        ScreenToClient(m_core.Window(), &point);
        TellRelease(button, wParam & ~static_cast<WPARAM>(MK_LBUTTON | MK_RBUTTON | MK_MBUTTON),
                    MAKELPARAM(point.x, point.y));
    }
}

LRESULT TreeInput::OnReleased(short button, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto keep = m_core.shared_from_this();
    const bool ofBox = button == kLeft && m_boxPressed;
    const bool dragging = m_core.Send(TVM_GETNEXTITEM, TVGN_DROPHILITE) != 0;
    const bool told = (m_down & button) != 0;
    if (told && ofBox && !dragging) {
        const auto here = PressAt(lParam);
        const auto data = m_core.rows.DataOf(here.item);
        LetGo();
        if (here.OnBox() && here.item == m_press.item && data &&
            !m_core.Tell([&](TreeWindowListener& l) { l.CheckClicked(*data); })) {
            return 0;
        }
    }
    if (!TellRelease(button, wParam, lParam)) return 0;
    return ofBox ? 0 : m_core.Send(message, wParam, lParam);
}

bool TreeInput::TellRelease(short button, WPARAM wParam, LPARAM lParam)
{
    const bool told = (m_down & button) != 0;
    m_down = static_cast<short>(m_down & ~button);
    if (m_down == 0) LetGo();
    // Pressed elsewhere, or told already: none of ours.
    if (!told) return true;
    return m_core.Tell([&](TreeWindowListener& l) { l.MouseUp(button, ShiftOf(wParam), PointOf(lParam)); });
}

void TreeInput::Hold()
{
    if (GetCapture() != nullptr) return;
    SetCapture(m_core.Window());
    m_captured = true;
}

void TreeInput::LetGo()
{
    if (std::exchange(m_captured, false) && GetCapture() == m_core.Window()) ReleaseCapture();
}

void TreeInput::Forget(HTREEITEM item)
{
    if (m_press.item == item) m_press.item = nullptr;
    if (m_press.caret == item) m_press.caret = nullptr;
}

LRESULT TreeInput::OnClick()
{
    constexpr UINT kOnRow = TVHT_ONITEMICON | TVHT_ONITEMLABEL;
    constexpr UINT kBesideRow = TVHT_ONITEMRIGHT | TVHT_ONITEMINDENT;
    const auto place = m_core.face.SelectsFullRow() ? kOnRow | kBesideRow : kOnRow;
    if (!m_press.item || m_press.item != m_press.caret || (m_press.flags & place) == 0) return 0;
    auto* const row = m_press.item;
    if (const auto data = m_core.rows.DataOf(row)) {
        m_core.Tell([&](TreeWindowListener& l) { l.Clicked(*data); });
    }
    // Else the tree would select the row, which may have gone.
    return m_press.item == row && m_core.Window() ? FALSE : TRUE;
}

bool TreeInput::IsDrag(Point here) const
{
    return std::abs(here.x - m_pressedAt.x) > GetSystemMetrics(SM_CXDRAG) ||
           std::abs(here.y - m_pressedAt.y) > GetSystemMetrics(SM_CYDRAG);
}

bool TreeInput::SpoilsEditing() const
{
    return m_boxPressed || m_dragged || ((m_down & kLeft) != 0 && IsDown(VK_LBUTTON));
}

std::optional<LRESULT> TreeInput::OnKey(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return OnKeyDown(message, wParam, lParam);
        case WM_KEYUP:
        case WM_SYSKEYUP:
            return OnKeyUp(message, wParam, lParam);
        case WM_CHAR:
            return OnChar(wParam, lParam);
        default:
            return std::nullopt;
    }
}

LRESULT TreeInput::OnKeyDown(UINT message, WPARAM wParam, LPARAM lParam)
{
    auto key = static_cast<short>(wParam);
    if (!m_core.Tell([&](TreeWindowListener& l) { l.KeyDown(key, ShiftOfKeys()); })) return 0;
    m_command = 0;
    if (key == 0 || (message == WM_KEYDOWN && DoKey(key))) return 0;
    return m_core.Send(message, static_cast<WPARAM>(key), lParam);
}

bool TreeInput::DoKey(short key)
{
    auto* const row = m_core.rows.Caret();
    const auto data = m_core.rows.DataOf(row);
    if (!data) return false;
    if (key == VK_SPACE && m_core.face.HasBoxes()) {
        m_core.Tell([&](TreeWindowListener& l) { l.CheckClicked(*data); });
        return true;
    }
    if (DoExpanding(key, row)) return true;
    if (key == VK_F2 && m_core.edit.Automatic()) {
        m_core.edit.Begin(row);
        return true;
    }
    return false;
}

/// Opening and closing: the tree itself goes on with the row although the listener may have taken it away.
bool TreeInput::DoExpanding(short key, HTREEITEM row)
{
    // The tree would open all there is below the row, which here means to read a whole disk.
    if (key == VK_MULTIPLY) m_command = L'*';
    if (key == VK_ADD) m_command = L'+';
    if (key == VK_SUBTRACT) m_command = L'-';
    // With Control the arrows scroll. Left in a closed row leads to its parent, Right in an open one to its first
    // child.
    const bool arrow = (key == VK_LEFT || key == VK_RIGHT) && !IsDown(VK_CONTROL);
    const bool expand = key == VK_MULTIPLY || key == VK_ADD || key == VK_RIGHT;
    if (m_command == 0 && (!arrow || m_core.rows.IsExpanded(row) == expand)) return false;
    m_core.rows.Route(expand ? TVE_EXPAND : TVE_COLLAPSE, row);
    return true;
}

LRESULT TreeInput::OnChar(WPARAM wParam, LPARAM lParam)
{
    auto character = static_cast<short>(wParam);
    if (!m_core.Tell([&](TreeWindowListener& l) { l.KeyPress(character); })) return 0;
    const auto typed = static_cast<WPARAM>(static_cast<WORD>(character));
    // The tree looks for a row that begins like this, and beeps when there is none.
    const bool command =
        typed < L' ' || (typed == L' ' && m_core.face.HasBoxes()) || (m_command != 0 && typed == m_command);
    return command ? 0 : m_core.Send(WM_CHAR, typed, lParam);
}

LRESULT TreeInput::OnKeyUp(UINT message, WPARAM wParam, LPARAM lParam)
{
    auto key = static_cast<short>(wParam);
    if (!m_core.Tell([&](TreeWindowListener& l) { l.KeyUp(key, ShiftOfKeys()); }) || key == 0) return 0;
    return m_core.Send(message, static_cast<WPARAM>(key), lParam);
}

}  // namespace sylvex
