#pragma once

#include "platform/timers.h"

namespace sylvex {

/// Timers of the calling thread's message loop; each must be used on the thread that created it.
class Win32Timers : public Timers {
public:
    std::unique_ptr<Timer> Create(std::function<void()> tick) override;
};

}  // namespace sylvex
