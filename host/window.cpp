#include "host/window.h"

#include <windowsx.h>

#include <exception>
#include <utility>

namespace sylvex::host {

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool Window::CreateThis(WNDCLASSEXW windowClass, const Shape& shape, HWND parent)
{
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &Window::Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = shape.className;
    if (!RegisterClassExW(&windowClass) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    const RECT& place = shape.place;
    CreateWindowExW(shape.extendedStyle, shape.className, shape.text, shape.style, place.left, place.top,
                    place.right - place.left, place.bottom - place.top, parent,
                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(shape.id)), windowClass.hInstance, this);
    return m_window != nullptr;
}

LRESULT Window::Default(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* const created = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    try {
        const LRESULT answer = self->Answer(message, wParam, lParam);
        if (message == WM_NCDESTROY) self->m_window = nullptr;
        return answer;
    } catch (const std::exception&) {
        // No exception may pass through the system's frames below.
        return 0;
    }
}

bool PlaceWindow::Create(HWND parent, int id, HFONT font, Listeners listeners)
{
    m_font = font;
    m_listeners = std::move(listeners);
    WNDCLASSEXW windowClass{};
    windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN;
    return CreateThis(windowClass, {L"SylvexHostPlace", L"", kStyle, 0, {}, id}, parent);
}

void PlaceWindow::SetText(std::wstring text)
{
    m_text = std::move(text);
    InvalidateRect(Handle(), nullptr, TRUE);
}

LRESULT PlaceWindow::Answer(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case WM_SETFOCUS:
            m_listeners.focused();
            return 0;
        case WM_SIZE:
            m_listeners.resized();
            InvalidateRect(Handle(), nullptr, TRUE);
            return 0;
        case WM_PAINT:
            Paint();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void PlaceWindow::Paint()
{
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    if (!m_text.empty()) {
        RECT area;
        GetClientRect(Handle(), &area);
        const int margin = GetSystemMetrics(SM_CXICON) / 2;
        DrawEdge(dc, &area, BDR_SUNKENOUTER, BF_RECT | BF_FLAT);
        InflateRect(&area, -margin, -margin);
        const HGDIOBJ before = SelectObject(dc, m_font);
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        SetBkMode(dc, TRANSPARENT);
        DrawTextW(dc, m_text.c_str(), static_cast<int>(m_text.size()), &area, DT_WORDBREAK | DT_NOPREFIX);
        SelectObject(dc, before);
    }
    EndPaint(Handle(), &paint);
}

bool Splitter::Create(HWND parent, int id, Bar bar, Moved moved)
{
    m_bar = bar;
    m_moved = std::move(moved);
    WNDCLASSEXW windowClass{};
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.hCursor = LoadCursorW(nullptr, bar == Bar::Vertical ? IDC_SIZEWE : IDC_SIZENS);
    const wchar_t* const className = bar == Bar::Vertical ? L"SylvexHostSplitterV" : L"SylvexHostSplitterH";
    return CreateThis(windowClass, {className, L"", WS_CHILD | WS_VISIBLE, 0, {}, id}, parent);
}

LRESULT Splitter::Answer(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case WM_LBUTTONDOWN:
            m_hold = Along({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            SetCapture(Handle());
            return 0;
        case WM_MOUSEMOVE:
            if (GetCapture() == Handle()) Drag();
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void Splitter::Drag()
{
    POINT point;
    GetCursorPos(&point);
    ScreenToClient(GetParent(Handle()), &point);
    m_moved(Along(point) - m_hold);
}

}  // namespace sylvex::host
