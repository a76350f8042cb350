#include "platform/win32/drag.h"

#include <utility>

#include "platform/win32/handles.h"

namespace sylvex {
namespace {

bool IsRelease(UINT message)
{
    return message == WM_LBUTTONUP || message == WM_RBUTTONUP || message == WM_MBUTTONUP;
}

}  // namespace

/// The mouse held for one window; a subclass of the window notices when it goes elsewhere, and a hook of this thread's
/// keyboard when Escape is pressed in any window.
class Win32Drag::Capture : public std::enable_shared_from_this<Capture> {
public:
    Capture(HWND window, std::function<void()> lost, std::function<void()> escape)
        : m_window(window), m_lost(std::move(lost)), m_escape(std::move(escape))
    {
    }

    void Begin()
    {
        SetWindowSubclass(m_window, &OnMessage, Identifier(), Identifier());
        t_holder = this;
        m_keyboard.reset(SetWindowsHookExW(WH_KEYBOARD, &OnKey, nullptr, GetCurrentThreadId()));
        ::SetCapture(m_window);
    }

    void End() noexcept
    {
        m_lost = m_escape = nullptr;
        m_keyboard.reset();
        if (t_holder == this) t_holder = nullptr;
        RemoveWindowSubclass(m_window, &OnMessage, Identifier());
        if (GetCapture() == m_window) ::ReleaseCapture();
    }

private:
    UINT_PTR Identifier() const noexcept { return reinterpret_cast<UINT_PTR>(this); }

    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR capture)
    {
        const auto self = reinterpret_cast<Capture*>(capture)->shared_from_this();
        // A tree that held the mouse since the press lets go of it before it tells of the release.
        const bool release = IsRelease(message);
        const bool before = std::exchange(self->m_releasing, self->m_releasing || release);
        const bool lost = message == WM_DESTROY ||
                          (message == WM_CAPTURECHANGED && !before && reinterpret_cast<HWND>(lParam) != window);
        if (lost) self->Lose();
        const auto answer = DefSubclassProc(window, message, wParam, lParam);
        self->m_releasing = before;
        if (release && GetCapture() != window) self->Lose();
        return answer;
    }

    static LRESULT CALLBACK OnKey(int code, WPARAM key, LPARAM keystroke)
    {
        const bool pressed = code == HC_ACTION && key == VK_ESCAPE && (static_cast<ULONG_PTR>(keystroke) >> 31) == 0;
        if (!pressed || !t_holder) return CallNextHookEx(nullptr, code, key, keystroke);
        const auto self = t_holder->shared_from_this();
        const bool elsewhere = GetFocus() != self->m_window;
        if (const auto escape = std::exchange(self->m_escape, nullptr)) escape();
        // A dialog that holds the focus would close by the key that was meant for the drag.
        return elsewhere ? 1 : CallNextHookEx(nullptr, code, key, keystroke);
    }

    void Lose()
    {
        if (const auto lost = std::exchange(m_lost, nullptr)) lost();
    }

    /// The one that has this thread's mouse: there is one mouse.
    static thread_local Capture* t_holder;

    HWND m_window;
    std::function<void()> m_lost;
    std::function<void()> m_escape;
    std::unique_ptr<std::remove_pointer_t<HHOOK>, HandleCloser<&UnhookWindowsHookEx>> m_keyboard;
    bool m_releasing = false;
};

thread_local Win32Drag::Capture* Win32Drag::Capture::t_holder = nullptr;

Win32Drag::~Win32Drag()
{
    Win32Drag::ReleaseCapture();
}

Size Win32Drag::PictureSize(ImageListHandle list)
{
    Size size;
    if (!ImageList_GetIconSize(HandleOf<HIMAGELIST>(list), &size.cx, &size.cy)) return {};
    return size;
}

bool Win32Drag::BeginDrag(ImageListHandle list, int picture, Point hotSpot)
{
    return ImageList_BeginDrag(HandleOf<HIMAGELIST>(list), picture, hotSpot.x, hotSpot.y) != FALSE;
}

void Win32Drag::DragEnter(WindowHandle window, Point where)
{
    ImageList_DragEnter(WindowOf(window), where.x, where.y);
}

void Win32Drag::DragMove(Point where)
{
    ImageList_DragMove(where.x, where.y);
}

void Win32Drag::DragLeave(WindowHandle window) noexcept
{
    ImageList_DragLeave(WindowOf(window));
}

void Win32Drag::DragShowNolock(bool show)
{
    ImageList_DragShowNolock(show ? TRUE : FALSE);
}

void Win32Drag::EndDrag() noexcept
{
    ImageList_EndDrag();
}

void Win32Drag::SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape)
{
    Win32Drag::ReleaseCapture();
    if (!IsWindow(WindowOf(window))) return;
    m_capture = std::make_shared<Capture>(WindowOf(window), std::move(lost), std::move(escape));
    m_capture->Begin();
}

void Win32Drag::ReleaseCapture() noexcept
{
    if (const auto capture = std::exchange(m_capture, nullptr)) capture->End();
}

}  // namespace sylvex
