#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "component/com.h"

#include <ocidl.h>

namespace sylvex {

/// The sinks of one outgoing interface, under the numbers that their owners know.
class Sinks {
public:
    /// The sinks of this moment, each held while somebody looks at the copy.
    std::vector<ComPtr<IUnknown>> Snapshot() const;
    bool Empty() const { return m_sinks.empty(); }
    /// Its number, never 0.
    DWORD Add(ComPtr<IUnknown> sink);
    /// False when no sink has the number.
    bool Remove(DWORD cookie);
    std::vector<CONNECTDATA> Connections() const;

private:
    struct Entry {
        DWORD cookie;
        ComPtr<IUnknown> sink;
    };
    std::vector<Entry> m_sinks;
    DWORD m_last = 0;
};

/// The control's two connection points: its events and the notices of changed properties. Sinks may come and go, and
/// the control too, while one of them is being called: a call goes on to those that were there when it began.
class ConnectionPoints {
public:
    /// `container` is the object whose points these are; not counted.
    explicit ConnectionPoints(IUnknown& container);
    ~ConnectionPoints();
    ConnectionPoints(const ConnectionPoints&) = delete;
    ConnectionPoints& operator=(const ConnectionPoints&) = delete;

    /// The point of an outgoing interface; empty when there is none.
    ComPtr<IConnectionPoint> Find(const IID& outgoing);
    /// New references to all points.
    std::vector<ComPtr<IConnectionPoint>> All();

    /// Raises an event. Arguments stand in reverse order; those by reference keep what the sinks make of them. A sink
    /// that fails is passed over.
    void Fire(DISPID event, std::span<VARIANT> reversed);
    /// Tells that a property has changed.
    void Changed(DISPID property);
    /// False when one of those who listen refuses the change.
    bool MayChange(DISPID property);

private:
    class Point;
    IUnknown& m_container;
    ComPtr<Point> m_events;
    ComPtr<Point> m_notices;
};

/// The part of the object that hands the points out.
class ConnectionPointsPart : public IConnectionPointContainer, public ControlPart;

}  // namespace sylvex
