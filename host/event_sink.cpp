#include "host/event_sink.h"

#include <array>

#include "host/automation.h"

namespace sylvex::host {
namespace {

struct EventShape {
    DISPID id;
    const wchar_t* name;
    /// Names of the arguments, nodes excluded.
    std::array<const wchar_t*, 4> arguments;
};

constexpr EventShape kEvents[] = {
    {1, L"ListItemChecked", {}},
    {2, L"NodeCheck", {}},
    {3, L"NodeClick", {}},
    {4, L"AfterLabelEdit", {L"Cancel", L"NewString"}},
    {5, L"BeforeLabelEdit", {L"Cancel"}},
    {6, L"Collapse", {}},
    {7, L"DblClick", {}},
    {8, L"Expand", {}},
    {9, L"KeyDown", {L"KeyCode", L"Shift"}},
    {10, L"KeyPress", {L"KeyAscii"}},
    {11, L"KeyUp", {L"KeyCode", L"Shift"}},
    {12, L"MouseUp", {L"Button", L"Shift", L"x", L"y"}},
    {13, L"MouseMove", {L"Button", L"Shift", L"x", L"y"}},
    {14, L"MouseDown", {L"Button", L"Shift", L"x", L"y"}},
    {15, L"HitTest", {L"x", L"y", L"HitResult"}},
};

const EventShape* FindShape(DISPID id)
{
    for (const EventShape& shape : kEvents) {
        if (shape.id == id) return &shape;
    }
    return nullptr;
}

std::wstring TextOf(VARIANT& argument)
{
    Variant text;
    if (FAILED(VariantCopyInd(text.Put(), &argument))) return L"?";
    if (FAILED(VariantChangeType(&text.Get(), &text.Get(), 0, VT_BSTR))) return L"?";
    return V_BSTR(&text.Get()) ? V_BSTR(&text.Get()) : L"";
}

ComPtr<INode> NodeOf(VARIANT& argument)
{
    Variant copy;
    return SUCCEEDED(VariantCopyInd(copy.Put(), &argument)) ? copy.As<INode>() : ComPtr<INode>();
}

float NumberOf(VARIANT& argument)
{
    Variant number;
    const bool read = SUCCEEDED(VariantCopyInd(number.Put(), &argument)) && V_VT(&number.Get()) == VT_R4;
    return read ? V_R4(&number.Get()) : 0;
}

ControlEvent DescribeEvent(DISPID id, const EventShape* shape, DISPPARAMS& parameters)
{
    ControlEvent event{static_cast<EventId>(id), EventName(id), {}, {}};
    // Arguments come last to first.
    for (UINT index = 0; index < parameters.cArgs; ++index) {
        VARIANT& argument = parameters.rgvarg[parameters.cArgs - 1 - index];
        if (index == 0) event.node = NodeOf(argument);
        const wchar_t* const name = shape && index < shape->arguments.size() ? shape->arguments[index] : nullptr;
        if (!name) continue;
        if (!event.arguments.empty()) event.arguments += L' ';
        event.arguments += std::wstring(name) + L'=' + TextOf(argument);
    }
    const bool hasPlace = shape && shape->arguments[2] && shape->arguments[3] && parameters.cArgs == 4;
    if (hasPlace) event.x = NumberOf(parameters.rgvarg[1]), event.y = NumberOf(parameters.rgvarg[0]);
    return event;
}

}  // namespace

std::wstring EventName(DISPID event)
{
    const EventShape* const shape = FindShape(event);
    return shape ? shape->name : L"event " + std::to_wstring(event);
}

STDMETHODIMP EventSink::QueryInterface(REFIID id, void** found)
{
    const HRESULT result = Answer<IDispatch>(this, id, found);
    if (result != E_NOINTERFACE || id != DIID___Sylvex) return result;
    *found = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP EventSink::GetTypeInfoCount(UINT* count)
{
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP EventSink::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                               UINT*)
{
    if ((kind & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    if (!arguments) return E_POINTER;
    try {
        m_listener(DescribeEvent(member, FindShape(member), *arguments));
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

STDMETHODIMP PropertySink::QueryInterface(REFIID id, void** found)
{
    return Answer<IPropertyNotifySink>(this, id, found);
}

STDMETHODIMP PropertySink::OnChanged(DISPID member)
{
    try {
        m_listener(member);
        return S_OK;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

Connection::Connection(IUnknown& source, REFIID id, IUnknown& sink)
{
    ComPtr<IConnectionPointContainer> container = ComPtr<IUnknown>(&source).As<IConnectionPointContainer>();
    if (!container) throw AutomationError(L"IConnectionPointContainer", E_NOINTERFACE, {});
    Check(container->FindConnectionPoint(id, m_point.Put()), L"FindConnectionPoint");
    Check(m_point->Advise(&sink, &m_cookie), L"Advise");
}

Connection::Connection(Connection&& other) noexcept
    : m_point(std::move(other.m_point)), m_cookie(std::exchange(other.m_cookie, 0))
{
}

Connection& Connection::operator=(Connection other) noexcept
{
    std::swap(m_point, other.m_point);
    std::swap(m_cookie, other.m_cookie);
    return *this;
}

Connection::~Connection()
{
    if (m_point && m_cookie) m_point->Unadvise(m_cookie);
}

}  // namespace sylvex::host
