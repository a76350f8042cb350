#include "platform/win32/box_tools.h"

#include "platform/win32/box_check.h"
#include "platform/win32/handles.h"

namespace sylvex {
namespace {

class Win32OwnerTimer : public OwnerTimer {
public:
    Win32OwnerTimer(HWND owner, UINT_PTR identifier, UINT milliseconds, std::function<void()> tick)
        : m_owner(owner), m_wanted(identifier), m_milliseconds(milliseconds), m_tick(std::move(tick)), m_next(First())
    {
        First() = this;
        Set();
    }
    Win32OwnerTimer(const Win32OwnerTimer&) = delete;
    Win32OwnerTimer& operator=(const Win32OwnerTimer&) = delete;
    ~Win32OwnerTimer() override
    {
        KillTimer(m_window, m_identifier);
        auto** link = &First();
        while (*link != nullptr && *link != this)
            link = &(*link)->m_next;
        *link = m_next;
        // The platform keeps one timer a window and number.
        if (auto* const replaced = Find(m_window, m_identifier)) replaced->Set();
    }

private:
    // The callback is told no more than window and number.
    static Win32OwnerTimer*& First()
    {
        thread_local Win32OwnerTimer* first = nullptr;
        return first;
    }

    static Win32OwnerTimer* Find(HWND window, UINT_PTR identifier)
    {
        auto* timer = First();
        while (timer && (timer->m_window != window || timer->m_identifier != identifier))
            timer = timer->m_next;
        return timer;
    }

    void Set()
    {
        m_window = m_owner;
        m_identifier = m_wanted;
        if (m_window && SetTimer(m_window, m_identifier, m_milliseconds, &OnTimer)) return;
        // No owner, or one of another thread, which cannot have a timer of ours.
        m_window = nullptr;
        m_identifier = SetTimer(nullptr, 0, m_milliseconds, &OnTimer);
    }

    static void CALLBACK OnTimer(HWND window, UINT, UINT_PTR identifier, DWORD)
    {
        const auto* const timer = Find(window, identifier);
        if (!timer) return;
        const auto tick = timer->m_tick;
        tick();
    }

    HWND m_owner;
    UINT_PTR m_wanted;
    UINT m_milliseconds;
    std::function<void()> m_tick;
    HWND m_window = nullptr;
    UINT_PTR m_identifier = 0;
    Win32OwnerTimer* m_next;
};

struct Sought {
    HWND owner;
    const std::wstring& caption;
    HWND found = nullptr;
};

bool IsBox(HWND window, const Sought& sought)
{
    constexpr int kTextOfBox = 0xFFFF;
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) != L"#32770" || GetWindow(window, GW_OWNER) != sought.owner) return false;
    // It may still be hidden: boxes are shown only once nothing else is waiting.
    if (!GetDlgItem(window, kTextOfBox)) return false;
    std::wstring title(sought.caption.size() + 2, L'\0');
    title.resize(static_cast<std::size_t>(GetWindowTextW(window, title.data(), static_cast<int>(title.size()))));
    return title == sought.caption;
}

BOOL CALLBACK Look(HWND window, LPARAM parameter)
{
    auto& sought = *reinterpret_cast<Sought*>(parameter);
    if (!IsBox(window, sought)) return TRUE;
    sought.found = window;
    return FALSE;
}

}  // namespace

std::unique_ptr<OwnerTimer> Win32BoxTools::Arm(WindowHandle owner, unsigned identifier, int milliseconds,
                                               std::function<void()> tick)
{
    return std::make_unique<Win32OwnerTimer>(WindowOf(owner), identifier, static_cast<UINT>(milliseconds),
                                             std::move(tick));
}

void Win32BoxTools::RestoreOwner(WindowHandle owner)
{
    // Only then: the command would also bring a maximised form back to its smaller size, and show a hidden one.
    auto* const form = FormOf(WindowOf(owner));
    if (form && IsIconic(form)) ShowWindow(form, SW_RESTORE);
}

WindowHandle Win32BoxTools::FindBox(WindowHandle owner, const std::wstring& caption)
{
    Sought sought{FormOf(WindowOf(owner)), caption};
    if (IsBox(GetActiveWindow(), sought)) return NumberOf(GetActiveWindow());
    EnumThreadWindows(GetCurrentThreadId(), &Look, reinterpret_cast<LPARAM>(&sought));
    return NumberOf(sought.found);
}

Rect Win32BoxTools::PlaceOf(WindowHandle window)
{
    RECT place{};
    if (!window || !GetWindowRect(WindowOf(window), &place)) return {};
    return RectOf(place);
}

Rect Win32BoxTools::WorkArea(WindowHandle window)
{
    auto* const monitor = window ? MonitorFromWindow(WindowOf(window), MONITOR_DEFAULTTONEAREST)
                                 : MonitorFromPoint(POINT{}, MONITOR_DEFAULTTOPRIMARY);
    MONITORINFO facts{};
    facts.cbSize = sizeof facts;
    return GetMonitorInfoW(monitor, &facts) ? RectOf(facts.rcWork) : Rect{};
}

void Win32BoxTools::MoveBox(WindowHandle box, Point corner)
{
    SetWindowPos(WindowOf(box), nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

std::unique_ptr<BoxCheck> Win32BoxTools::AddCheck(WindowHandle box, const std::wstring& text)
{
    if (!IsWindow(WindowOf(box))) return nullptr;
    return std::make_unique<Win32BoxCheck>(WindowOf(box), text);
}

}  // namespace sylvex
