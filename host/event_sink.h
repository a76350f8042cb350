#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/com.h"
#include "SylvexControl_h.h"

#include <ocidl.h>

namespace sylvex::host {

/// Identifiers of the events that the form reacts to.
enum class EventId : DISPID {
    NodeCheck = 2,
    NodeClick = 3,
    Collapse = 6,
    Expand = 8,
    MouseUp = 12,
    MouseMove = 13,
    MouseDown = 14
};

/// An event of the control, as it arrived.
struct ControlEvent {
    EventId id;
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
class EventSink : public ComObject<IDispatch> {
public:
    using Listener = std::function<void(const ControlEvent&)>;

    explicit EventSink(Listener listener) : m_listener(std::move(listener)) {}

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                        UINT*) override;

private:
    Listener m_listener;
};

/// Hears of changed properties.
class PropertySink : public ComObject<IPropertyNotifySink> {
public:
    using Listener = std::function<void(DISPID)>;

    explicit PropertySink(Listener listener) : m_listener(std::move(listener)) {}

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
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
