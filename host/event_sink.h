#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "com/dispatch.h"
#include "com/object.h"
#include "SylvexControl_h.h"

#include <ocidl.h>

namespace sylvex::host {

/// An event of the control, as it arrived.
struct ControlEvent {
    DISPID id;
    std::wstring name;
    /// Empty for an event without a node.
    ComPtr<INode> node;
    /// The other arguments as `name=value`, separated by blanks.
    std::wstring arguments;
    /// Where the mouse was, in the container's units; 0 for other events.
    float x = 0;
    float y = 0;
};

/// Name of an event; "event 99" for one that is not known.
std::wstring EventName(DISPID event);

/// Receives __Sylvex.
class EventSink final : public CountedObject<EventDispatch<__Sylvex>> {
public:
    using Listener = std::function<void(const ControlEvent&)>;

    explicit EventSink(Listener listener) : m_listener(std::move(listener)) {}

    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                        UINT*) override;

private:
    Listener m_listener;
};

/// Hears of changed properties.
class PropertySink final : public CountedObject<IPropertyNotifySink> {
public:
    using Listener = std::function<void(DISPID)>;

    explicit PropertySink(Listener listener) : m_listener(std::move(listener)) {}

    STDMETHODIMP OnChanged(DISPID member) override;
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

private:
    Listener m_listener;
};

/// A connection of a sink to an object's outgoing interface; ended by its destructor.
class Connection {
public:
    Connection() = default;
    /// Throws AutomationError when the object has no such outgoing interface.
    Connection(IUnknown& source, REFIID id, IUnknown& sink);
    Connection(const Connection&) = delete;
    Connection(Connection&& other) noexcept;
    Connection& operator=(Connection other) noexcept;
    ~Connection();

private:
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

}  // namespace sylvex::host
