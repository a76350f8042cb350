#include "tests/simulated/simulated_timers.h"

#include <algorithm>

namespace sylvex {

class SimulatedTimer final : public Timer {
public:
    SimulatedTimer(SimulatedTimers& clock, std::function<void()> tick) : m_clock(clock), m_tick(std::move(tick))
    {
        m_clock.m_timers.push_back(this);
    }
    SimulatedTimer(const SimulatedTimer&) = delete;
    SimulatedTimer& operator=(const SimulatedTimer&) = delete;
    ~SimulatedTimer() override { std::erase(m_clock.m_timers, this); }

    int Interval() const { return m_interval; }
    void SetInterval(int milliseconds) override
    {
        m_clock.m_gate.Enter("Timer::SetInterval");
        m_interval = milliseconds;
        Set();
    }
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled) override
    {
        m_clock.m_gate.Enter("Timer::SetEnabled");
        if (m_enabled == enabled) return;
        m_enabled = enabled;
        Set();
    }
    std::pair<std::int64_t, std::int64_t> Due() const { return {m_due, m_setting}; }
    void Tick()
    {
        Set();
        // The callback may destroy this timer.
        const std::function<void()> tick = m_tick;
        tick();
    }

private:
    void Set()
    {
        m_due = m_clock.m_now + std::max(m_interval, 1);
        m_setting = ++m_clock.m_settings;
    }
    SimulatedTimers& m_clock;
    std::function<void()> m_tick;
    int m_interval = 1000;
    bool m_enabled = false;
    std::int64_t m_due = 0;
    std::int64_t m_setting = 0;
};

SimulatedTimer* SimulatedTimers::NextDue(std::int64_t until) const
{
    SimulatedTimer* next = nullptr;
    for (SimulatedTimer* const timer : m_timers) {
        if (!timer->Enabled() || timer->Due().first > until) continue;
        if (next == nullptr || timer->Due() < next->Due()) next = timer;
    }
    return next;
}

void SimulatedTimers::Advance(int milliseconds)
{
    const std::int64_t until = m_now + milliseconds;
    while (SimulatedTimer* const timer = NextDue(until)) {
        m_now = timer->Due().first;
        timer->Tick();
    }
    m_now = until;
}

std::vector<int> SimulatedTimers::Enabled() const
{
    std::vector<int> intervals;
    for (const SimulatedTimer* const timer : m_timers) {
        if (timer->Enabled()) intervals.push_back(timer->Interval());
    }
    return intervals;
}

std::unique_ptr<Timer> SimulatedTimers::Create(std::function<void()> tick)
{
    m_gate.Enter("Timers::Create");
    return std::make_unique<SimulatedTimer>(*this, std::move(tick));
}

}  // namespace sylvex
