#pragma once

#include <functional>
#include <memory>

namespace sylvex {

/// A timer on the control's thread; nothing is set while it is disabled.
class Timer {
public:
    virtual ~Timer() = default;
    /// Milliseconds, above 0; takes effect at once when enabled.
    virtual void SetInterval(int milliseconds) = 0;
    virtual void SetEnabled(bool enabled) = 0;
};

class Timers {
public:
    virtual ~Timers() = default;
    /// A disabled timer that calls `tick` every interval while enabled. The callback must not throw.
    virtual std::unique_ptr<Timer> Create(std::function<void()> tick) = 0;
};

}  // namespace sylvex
