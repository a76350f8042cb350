#include "component/container/control_window.h"

#include "component/border/border.h"

namespace sylvex {

namespace {

constexpr wchar_t kClassName[] = L"SylvexControlWindow";
constexpr DWORD kHiddenStyle = WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
constexpr DWORD kPlacedStyle = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;

HRESULT LastError()
{
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    return FAILED(result) ? result : E_FAIL;
}

/// Our own message, under a number that no other program's message has.
UINT DeferredMessage()
{
    static const UINT number = RegisterWindowMessageW(L"SylvexControl.Deferred");
    return number;
}

/// The window class, for as long as the component is loaded.
class WindowClass {
public:
    explicit WindowClass(WNDPROC procedure)
    {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = procedure;
        description.hInstance = ModuleInstance();
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = kClassName;
        m_atom = RegisterClassExW(&description);
        if (m_atom == 0) throw ComError{LastError()};
    }
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;
    // A class outlives the module that it names, and the next module at that address would be called.
    ~WindowClass() { UnregisterClassW(MAKEINTATOM(m_atom), ModuleInstance()); }
    LPCWSTR Name() const { return MAKEINTATOM(m_atom); }

private:
    ATOM m_atom = 0;
};

Size SizeOf(const RECT& place)
{
    return {place.right - place.left, place.bottom - place.top};
}

}  // namespace

ControlWindow::ControlWindow(ControlWindowOwner& owner) : m_owner(owner)
{
    Ensure();
}

ControlWindow::~ControlWindow()
{
    if (!m_window) return;
    // From here on its messages find no owner.
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
}

void ControlWindow::Ensure()
{
    if (m_window) return;
    static const WindowClass windowClass(Procedure);
    HWND const window = CreateWindowExW(WS_EX_CONTROLPARENT, windowClass.Name(), L"", kHiddenStyle, 0, 0, m_size.cx,
                                        m_size.cy, nullptr, nullptr, ModuleInstance(), nullptr);
    if (!window) throw ComError{LastError()};
    m_window = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void ControlWindow::Attach(HWND parent, const RECT& place)
{
    Ensure();
    SetWindowLongPtrW(m_window, GWL_STYLE, kPlacedStyle);
    if (!SetParent(m_window, parent)) {
        const HRESULT failure = LastError();
        SetWindowLongPtrW(m_window, GWL_STYLE, kHiddenStyle);
        throw ComError{failure};
    }
    const Size size = SizeOf(place);
    SetWindowPos(m_window, nullptr, place.left, place.top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_FRAMECHANGED);
}

void ControlWindow::Detach()
{
    if (!m_window) return;
    ShowWindow(m_window, SW_HIDE);
    SetParent(m_window, nullptr);
    SetWindowLongPtrW(m_window, GWL_STYLE, kHiddenStyle);
    SetWindowPos(m_window, nullptr, 0, 0, 0, 0,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE | SWP_FRAMECHANGED);
}

void ControlWindow::Move(const RECT& place)
{
    m_size = SizeOf(place);
    if (!m_window) return;
    SetWindowPos(m_window, nullptr, place.left, place.top, m_size.cx, m_size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::Resize(Size size)
{
    m_size = size;
    if (!m_window) return;
    SetWindowPos(m_window, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

Size ControlWindow::InnerSize() const
{
    RECT inner{};
    return m_window && GetClientRect(m_window, &inner) ? SizeOf(inner) : m_size;
}

bool ControlWindow::Defer()
{
    if (!m_window || !PostMessageW(m_window, DeferredMessage(), 0, 0)) return false;
    ++m_deferred;
    return true;
}

/// The window has gone with its parent. What was deferred waits with a new one.
void ControlWindow::Lost()
{
    m_window = nullptr;
    if (m_deferred == 0) return;
    try {
        Ensure();
        for (int waiting = 0; waiting < m_deferred; ++waiting)
            PostMessageW(m_window, DeferredMessage(), 0, 0);
    } catch (const ComError&) {  // out of windows: what was deferred stays undone
    }
}

LRESULT ControlWindow::DoDeferred()
{
    // Anybody can send any message.
    if (m_deferred == 0) return 0;
    --m_deferred;
    m_owner.Deferred();
    return 0;
}

LRESULT ControlWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND const window = m_window;
    LRESULT result = 0;
    if (message == DeferredMessage()) return DoDeferred();
    switch (message) {
        case WM_CLOSE:  // to all windows, perhaps: this one goes with its control
            return 0;
        case WM_DESTROY:
            m_owner.Destroying();
            break;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            Lost();
            break;
        case WM_SIZE:
            m_size = {LOWORD(lParam), HIWORD(lParam)};
            m_owner.Resized(m_size);
            break;
        case WM_ERASEBKGND: {
            RECT inner;
            GetClientRect(window, &inner);
            m_owner.EraseBackground(reinterpret_cast<HDC>(wParam), inner);
            return 1;
        }
        default:
            if (m_owner.Message(message, wParam, lParam, result)) return result;
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace sylvex
