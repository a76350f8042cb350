#pragma once

#include <memory>

namespace sylvex {

/// What dragging asks of the control that it belongs to.
class DragOwner {
public:
    virtual ~DragOwner() = default;
    /// Keeps the control in existence while a timer or a notice of the platform runs.
    virtual std::shared_ptr<void> KeepAlive() = 0;
    /// Builds the bound list anew, as after a tick; nothing without one.
    virtual void RebuildBoundList() = 0;
};

/// Runs what the platform calls on its own, which has nobody to pass a failure on to: it has been reported.
template <class Body>
void FromPlatform(DragOwner& owner, Body&& body) noexcept
{
    const std::shared_ptr<void> alive = owner.KeepAlive();
    try {
        body();
    } catch (...) {
    }
}

}  // namespace sylvex
