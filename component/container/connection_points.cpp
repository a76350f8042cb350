#include "component/container/connection_points.h"

#include <algorithm>

#include "com/late_call.h"
#include "component/border/enumerator.h"
#include "component/container/control_core.h"

#include "SylvexControl_h.h"

namespace sylvex {

// Not in a namespace without a name, where the enumerators would not look.
static CONNECTDATA HandOut(const Sinks::Entry& connection)
{
    CONNECTDATA data{nullptr, connection.first};
    connection.second.CopyTo(&data.pUnk);
    return data;
}

static IConnectionPoint* HandOut(const ComPtr<IConnectionPoint>& point)
{
    IConnectionPoint* result = nullptr;
    point.CopyTo(&result);
    return result;
}

std::vector<ComPtr<IUnknown>> Sinks::Snapshot() const
{
    std::vector<ComPtr<IUnknown>> sinks;
    sinks.reserve(m_sinks.size());
    for (const Entry& entry : m_sinks)
        sinks.push_back(entry.second);
    return sinks;
}

DWORD Sinks::Add(ComPtr<IUnknown> sink)
{
    m_sinks.emplace_back(++m_last, std::move(sink));
    return m_last;
}

bool Sinks::Remove(DWORD cookie)
{
    const auto found =
        std::find_if(m_sinks.begin(), m_sinks.end(), [&](const Entry& entry) { return entry.first == cookie; });
    if (found == m_sinks.end()) return false;
    // Its release may run code that comes back here, so the list is in order before.
    const ComPtr<IUnknown> released = std::move(found->second);
    m_sinks.erase(found);
    return true;
}

void Sinks::Clear()
{
    const std::vector<Entry> released = std::exchange(m_sinks, {});
}

/// A connection point, which may outlive its container.
class ConnectionPoints::Point final : public CountedObject<IConnectionPoint> {
public:
    Point(IUnknown& container, const IID& outgoing) : m_container(&container), m_outgoing(outgoing) {}

    const IID& Outgoing() const { return m_outgoing; }
    const Sinks& Connected() const { return m_sinks; }
    void ContainerGone()
    {
        m_container = nullptr;
        m_sinks.Clear();
    }

    STDMETHODIMP GetConnectionInterface(IID* id) override
    {
        if (!id) return E_POINTER;
        *id = m_outgoing;
        return S_OK;
    }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override
    {
        if (!container) return E_POINTER;
        *container = nullptr;
        if (!m_container) return E_UNEXPECTED;
        return m_container->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container));
    }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        if (!sink || !cookie) return E_POINTER;
        *cookie = 0;
        if (!m_container) return E_UNEXPECTED;
        return Border(IID_IConnectionPoint, [&] {
            ComPtr<IUnknown> connected = SinkOf(*sink);
            if (!connected) return CONNECT_E_CANNOTCONNECT;
            *cookie = m_sinks.Add(std::move(connected));
            return S_OK;
        });
    }
    STDMETHODIMP Unadvise(DWORD cookie) override { return m_sinks.Remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION; }
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override
    {
        if (!connections) return E_POINTER;
        *connections = nullptr;
        return Border(IID_IConnectionPoint, [&] {
            using Connections = ListEnumerator<IEnumConnections, CONNECTDATA, Sinks::Entry>;
            *connections = Make<Connections>(m_sinks.All()).Detach();
        });
    }

private:
    /// The sink's interface for this point: late-bound sinks of events answer for IDispatch only.
    ComPtr<IUnknown> SinkOf(IUnknown& sink) const
    {
        ComPtr<IUnknown> found;
        if (SUCCEEDED(sink.QueryInterface(m_outgoing, found.PutAny()))) return found;
        if (m_outgoing == __uuidof(::__Sylvex)) {
            sink.QueryInterface(IID_IDispatch, found.PutAny());
        }
        return found;
    }

    IUnknown* m_container;
    const IID m_outgoing;
    Sinks m_sinks;
};

ConnectionPoints::ConnectionPoints(IUnknown& container)
    : m_events(Make<Point>(container, __uuidof(::__Sylvex))), m_notices(Make<Point>(container, IID_IPropertyNotifySink))
{
}

ConnectionPoints::~ConnectionPoints()
{
    m_events->ContainerGone();
    m_notices->ContainerGone();
}

std::vector<ComPtr<IConnectionPoint>> ConnectionPoints::All() const
{
    return {ComPtr<IConnectionPoint>(m_events.Get()), ComPtr<IConnectionPoint>(m_notices.Get())};
}

ComPtr<IConnectionPoint> ConnectionPoints::Find(const IID& outgoing) const
{
    for (const ComPtr<Point>& point : {m_events, m_notices}) {
        if (point->Outgoing() == outgoing) return ComPtr<IConnectionPoint>(point.Get());
    }
    return nullptr;
}

bool ConnectionPoints::HasListeners() const
{
    return !m_events->Connected().All().empty();
}

void ConnectionPoints::Fire(DISPID event, std::span<VARIANT> reversed) const
{
    for (const ComPtr<IUnknown>& sink : m_events->Connected().Snapshot()) {
        Variant result;
        // What Find() took is IDispatch or an interface that is nothing but IDispatch.
        auto* const handler = static_cast<IDispatch*>(sink.Get());
        Guarded([&] { CallMember(*handler, event, DISPATCH_METHOD, reversed, &result.Get()); });
    }
}

void ConnectionPoints::Changed(DISPID property) const
{
    for (const ComPtr<IUnknown>& sink : m_notices->Connected().Snapshot()) {
        auto* const listener = static_cast<IPropertyNotifySink*>(sink.Get());
        Guarded([&] { listener->OnChanged(property); });
    }
}

bool ConnectionPoints::MayChange(DISPID property) const
{
    for (const ComPtr<IUnknown>& sink : m_notices->Connected().Snapshot()) {
        auto* const listener = static_cast<IPropertyNotifySink*>(sink.Get());
        if (Guarded([&] { return listener->OnRequestEdit(property); }) == S_FALSE) return false;
    }
    return true;
}

STDMETHODIMP ConnectionPointsPart::EnumConnectionPoints(IEnumConnectionPoints** points)
{
    if (!points) return E_POINTER;
    *points = nullptr;
    return Border(IID_IConnectionPointContainer, [&] {
        using Points = ListEnumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>>;
        *points = Make<Points>(Core().Points().All()).Detach();
    });
}

STDMETHODIMP ConnectionPointsPart::FindConnectionPoint(REFIID outgoing, IConnectionPoint** point)
{
    if (!point) return E_POINTER;
    *point = nullptr;
    return Border(IID_IConnectionPointContainer, [&] {
        *point = Core().Points().Find(outgoing).Detach();
        return *point ? S_OK : CONNECT_E_NOCONNECTION;
    });
}

}  // namespace sylvex
