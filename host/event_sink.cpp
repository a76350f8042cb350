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
    {dispidListItemChecked, L"ListItemChecked", {}},
    {dispidNodeCheck, L"NodeCheck", {}},
    {dispidNodeClick, L"NodeClick", {}},
    {dispidAfterLabelEdit, L"AfterLabelEdit", {L"Cancel", L"NewString"}},
    {dispidBeforeLabelEdit, L"BeforeLabelEdit", {L"Cancel"}},
    {dispidCollapse, L"Collapse", {}},
    {dispidDblClick, L"DblClick", {}},
    {dispidExpand, L"Expand", {}},
    {dispidKeyDown, L"KeyDown", {L"KeyCode", L"Shift"}},
    {dispidKeyPress, L"KeyPress", {L"KeyAscii"}},
    {dispidKeyUp, L"KeyUp", {L"KeyCode", L"Shift"}},
    {dispidMouseUp, L"MouseUp", {L"Button", L"Shift", L"x", L"y"}},
    {dispidMouseMove, L"MouseMove", {L"Button", L"Shift", L"x", L"y"}},
    {dispidMouseDown, L"MouseDown", {L"Button", L"Shift", L"x", L"y"}},
    {dispidHitTest, L"HitTest", {L"x", L"y", L"HitResult"}},
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
    return FAILED(text.ChangeType(VT_BSTR)) ? L"?" : std::wstring(text.Text());
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
    ControlEvent event{id, EventName(id), {}, {}};
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
