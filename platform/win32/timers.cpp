#include "platform/win32/timers.h"

#include <algorithm>

#include "platform/runtime_error.h"
#include "platform/win32/handles.h"

namespace sylvex {
namespace {

class Win32Timer : public Timer {
public:
    explicit Win32Timer(std::function<void()> tick) : m_tick(std::move(tick)) {}
    ~Win32Timer() override
    {
        if (m_enabled) KillTimer(m_window.get(), kIdentifier);
    }

    void SetInterval(int milliseconds) override
    {
        m_interval = std::max(milliseconds, 1);
        if (m_enabled) Set();
    }

    void SetEnabled(bool enabled) override
    {
        if (enabled == m_enabled) return;
        if (enabled) {
            Set();
        } else {
            KillTimer(m_window.get(), kIdentifier);
        }
        m_enabled = enabled;
    }

private:
    static constexpr UINT_PTR kIdentifier = 1;

    void Set()
    {
        // A window of its own: when it goes, so does a tick that is waiting in the queue. A class of the system's,
        // since a class of this module would outlive the module.
        if (!m_window) {
            m_window.reset(
                CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
            SetWindowLongPtrW(m_window.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        }
        if (!m_window || !SetTimer(m_window.get(), kIdentifier, static_cast<UINT>(m_interval), &OnTimer)) {
            throw OutOfMemory();
        }
    }

    static void CALLBACK OnTimer(HWND window, UINT, UINT_PTR, DWORD)
    {
        // By its window, which only we know, and not by a number that a message brings.
        const auto* const timer = reinterpret_cast<const Win32Timer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (!timer || !timer->m_enabled) return;
        // The callback may destroy the timer.
        const auto tick = timer->m_tick;
        tick();
    }

    std::function<void()> m_tick;
    UniqueWindow m_window;
    int m_interval = 100;
    bool m_enabled = false;
};

}  // namespace

std::unique_ptr<Timer> Win32Timers::Create(std::function<void()> tick)
{
    return std::make_unique<Win32Timer>(std::move(tick));
}

}  // namespace sylvex
