#pragma once

#include <cstdint>
#include <vector>

#include "platform/timers.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

class SimulatedTimer;

/// Timers on a clock that stands still until a test moves it. Outlives the timers that it makes.
class SimulatedTimers final : public Timers {
public:
    explicit SimulatedTimers(CallGate& gate) : m_gate(gate) {}
    /// Lets time pass; timers that fall due tick in the order of their time, then of their being set.
    void Advance(int milliseconds);
    std::int64_t Now() const { return m_now; }
    /// The intervals of the enabled timers, in the order of their making.
    std::vector<int> Enabled() const;
    /// Timers not destroyed yet.
    int Live() const { return static_cast<int>(m_timers.size()); }

    std::unique_ptr<Timer> Create(std::function<void()> tick) override;

private:
    friend class SimulatedTimer;
    SimulatedTimer* NextDue(std::int64_t until) const;
    CallGate& m_gate;
    std::vector<SimulatedTimer*> m_timers;
    std::int64_t m_now = 0;
    std::int64_t m_settings = 0;
};

}  // namespace sylvex
