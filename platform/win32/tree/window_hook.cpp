#include "platform/win32/tree/window_hook.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace sylvex {
namespace {

struct Hooked {
    HWND window;
    WNDPROC before;
    std::vector<WindowHook*> hooks;
};

// The hooked windows of all threads: one or two for each control.
class Table {
public:
    Hooked* Find(HWND window) noexcept
    {
        const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                        [window](const Hooked& hooked) { return hooked.window == window; });
        return found == m_windows.end() ? nullptr : &*found;
    }
    void Add(Hooked hooked) { m_windows.push_back(std::move(hooked)); }
    void Remove(HWND window) noexcept
    {
        std::erase_if(m_windows, [window](const Hooked& hooked) { return hooked.window == window; });
    }
    std::mutex mutex;

private:
    std::vector<Hooked> m_windows;
};

Table& TheTable()
{
    static Table table;
    return table;
}

WNDPROC ProcedureOf(HWND window) noexcept
{
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

void SetProcedure(HWND window, WNDPROC procedure) noexcept
{
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

WindowHook* HookAt(HWND window, std::size_t place)
{
    const std::lock_guard lock(TheTable().mutex);
    const auto* const hooked = TheTable().Find(window);
    return hooked && place < hooked->hooks.size() ? hooked->hooks[place] : nullptr;
}

std::optional<LRESULT> AskHooks(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    for (std::size_t place = 0; auto* const hook = HookAt(window, place); ++place) {
        if (const auto answer = hook->OnHooked(window, message, wParam, lParam)) return answer;
    }
    return std::nullopt;
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WNDPROC before = DefWindowProcW;
    {
        const std::lock_guard lock(TheTable().mutex);
        if (const auto* const hooked = TheTable().Find(window)) before = hooked->before;
    }
    const auto answer = AskHooks(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        // The handle may soon be another window's.
        const std::lock_guard lock(TheTable().mutex);
        TheTable().Remove(window);
    }
    return answer ? *answer : CallWindowProcW(before, window, message, wParam, lParam);
}

}  // namespace

bool WindowHook::Attach(HWND window, WindowHook& hook)
{
    const std::lock_guard lock(TheTable().mutex);
    if (auto* const hooked = TheTable().Find(window)) {
        hooked->hooks.push_back(&hook);
        return true;
    }
    const auto before = ProcedureOf(window);
    if (!before) return false;
    TheTable().Add({window, before, {&hook}});
    SetProcedure(window, &OnMessage);
    return true;
}

void WindowHook::Detach(HWND window, WindowHook& hook) noexcept
{
    const std::lock_guard lock(TheTable().mutex);
    auto* const hooked = TheTable().Find(window);
    if (!hooked) return;
    std::erase(hooked->hooks, &hook);
    // Where somebody else has hooked the window since, our procedure has to stay and pass everything on.
    if (!hooked->hooks.empty() || ProcedureOf(window) != &OnMessage) return;
    SetProcedure(window, hooked->before);
    TheTable().Remove(window);
}

}  // namespace sylvex
