#pragma once

#include <span>
#include <utility>
#include <vector>

#include "component/border/border.h"
#include "component/container/control_part.h"

#include <ocidl.h>

namespace sylvex {

/// The sinks of one outgoing interface, under the numbers that their owners know.
class Sinks {
public:
    using Entry = std::pair<DWORD, ComPtr<IUnknown>>;

    const std::vector<Entry>& All() const { return m_sinks; }
    /// The sinks of this moment, held while somebody calls them.
    std::vector<ComPtr<IUnknown>> Snapshot() const;
    /// Its number, never 0.
    DWORD Add(ComPtr<IUnknown> sink);
    /// False when no sink has the number.
    bool Remove(DWORD cookie);
    void Clear();

private:
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
    ComPtr<IConnectionPoint> Find(const IID& outgoing) const;
    std::vector<ComPtr<IConnectionPoint>> All() const;

    /// Whether anybody listens to the events.
    bool HasListeners() const;
    /// Raises an event. Arguments stand in reverse order; those by reference keep what the sinks make of them. A sink
    /// that fails is passed over.
    void Fire(DISPID event, std::span<VARIANT> reversed) const;
    /// Tells that a property has changed.
    void Changed(DISPID property) const;
    /// False when one of those who listen refuses the change.
    bool MayChange(DISPID property) const;

private:
    class Point;
    ComPtr<Point> m_events;
    ComPtr<Point> m_notices;
};

/// The part of the object that hands the points out.
class ConnectionPointsPart : public IConnectionPointContainer, public ControlPart {
public:
    void* Find(const IID& id) { return id == IID_IConnectionPointContainer ? this : nullptr; }

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID outgoing, IConnectionPoint** point) override;
};

}  // namespace sylvex
