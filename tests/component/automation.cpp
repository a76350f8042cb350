#include "tests/component/automation.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "com/late_call.h"
#include "SylvexControl_h.h"
#include "tests/component/component_file.h"

namespace sylvex::test {
namespace {

constexpr HRESULT kNumbered = static_cast<HRESULT>(0x800A0000);

// Every test here needs OLE on its thread.
class OleThread : public testing::Environment {
public:
    void SetUp() override { OleInitialize(nullptr); }
    void TearDown() override { OleUninitialize(); }
};
[[maybe_unused]] testing::Environment* const oleThread = testing::AddGlobalTestEnvironment(new OleThread);

void Check(HRESULT result, ExceptionInfo* exception = nullptr)
{
    if (SUCCEEDED(result)) return;
    Failure failure{result, {}};
    if (result == DISP_E_EXCEPTION && exception) {
        failure.number = exception->Get().scode;
        failure.description = ViewOf(exception->Get().bstrDescription);
    }
    if ((failure.number & ~0xFFFF) == kNumbered) failure.number &= 0xFFFF;
    throw failure;
}

// Stays loaded to the end of the process.
const ComponentFile& Component()
{
    static const ComponentFile& file = *new ComponentFile;
    return file;
}

const wchar_t* NameOf(DISPID event)
{
    static const wchar_t* const names[] = {L"ListItemChecked", L"NodeCheck", L"NodeClick", L"AfterLabelEdit",
                                           L"BeforeLabelEdit", L"Collapse",  L"DblClick",  L"Expand",
                                           L"KeyDown",         L"KeyPress",  L"KeyUp",     L"MouseUp",
                                           L"MouseMove",       L"MouseDown", L"HitTest"};
    return event >= 1 && event <= 15 ? names[event - 1] : L"?";
}

}  // namespace

std::wstring Value::Text() const
{
    Variant text;
    Check(text.SetTo(Raw(), VT_BSTR));
    return std::wstring(text.Text());
}

int Value::Number() const
{
    Variant number;
    Check(number.SetTo(Raw(), VT_I4));
    return V_I4(&number.Get());
}

bool Value::Flag() const
{
    if (V_VT(&Raw()) != VT_BOOL) throw Failure{13, L"not a Boolean"};
    return V_BOOL(&Raw()) == VARIANT_TRUE;
}

bool Value::IsNothing() const
{
    return V_VT(&Raw()) == VT_DISPATCH && !V_DISPATCH(&Raw());
}

IDispatch* Value::Object() const
{
    if (V_VT(&Raw()) != VT_DISPATCH) throw Failure{13, L"not an object"};
    return V_DISPATCH(&Raw());
}

bool Value::Is(const Value& other) const
{
    return ComPtr(Object()).As<IUnknown>() == ComPtr(other.Object()).As<IUnknown>();
}

Value Value::Invoke(const wchar_t* name, WORD kind, std::vector<Value>& arguments) const
{
    IDispatch* const object = Object();
    if (!object) throw Failure{91, L"nothing"};
    DISPID member = DISPID_UNKNOWN;
    Check(FindMember(*object, name, member));
    std::vector<VARIANT> reversed;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        reversed.push_back(argument->Raw());
    Value result;
    ExceptionInfo exception;
    const bool writes = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    Check(CallMember(*object, member, kind, reversed, writes ? nullptr : &result.Raw(), exception.Put()), &exception);
    return result;
}

ComPtr<IEnumVARIANT> Value::Enumerator() const
{
    Variant enumerator;
    constexpr WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    Check(CallMember(*Object(), DISPID_NEWENUM, kind, {}, enumerator.Put()));
    return enumerator.As<IEnumVARIANT>();
}

std::vector<Value> Value::Each() const
{
    const ComPtr<IEnumVARIANT> items = Enumerator();
    std::vector<Value> met;
    for (Value item; items->Next(1, &item.Raw(), nullptr) == S_OK; item = Value())
        met.push_back(item);
    return met;
}

long ErrorOf(const std::function<void()>& body)
{
    try {
        body();
        return 0;
    } catch (const Failure& failure) {
        return failure.number;
    }
}

Value MakeControl()
{
    ComPtr<IClassFactory> factory;
    Check(Component().ClassObject(__uuidof(::Sylvex), factory.Put()));
    ComPtr<IDispatch> control;
    Check(factory->CreateInstance(nullptr, IID_IDispatch, control.PutAny()));
    return control.Get();
}

Value AddNode(const Value& nodes, const Value& text, const Value& parent)
{
    const Value child(4);
    const Value none = Value::Missing();
    return nodes.Call(L"Add", {parent, IsMissing(parent.Raw()) ? none : child, none, text});
}

bool ComponentIsBusy()
{
    return Component().CanUnloadNow() != S_OK;
}

HWND WindowOf(const Value& object)
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(object.Get(L"hWnd").Number()));
}

ComPtr<IConnectionPoint> PointOf(const Value& control, const IID& outgoing)
{
    ComPtr<IConnectionPoint> point;
    ComPtr(control.Object()).As<IConnectionPointContainer>()->FindConnectionPoint(outgoing, point.Put());
    return point;
}

EventLog::EventLog(const Value& control) : m_point(PointOf(control, __uuidof(::__Sylvex)))
{
    Check(m_point ? m_point->Advise(this, &m_cookie) : CONNECT_E_NOCONNECTION);
}

EventLog::~EventLog()
{
    Disconnect();
    EXPECT_EQ(References(), 0) << "the control still holds a sink that has disconnected";
}

void EventLog::Disconnect()
{
    if (const ComPtr<IConnectionPoint> point = std::move(m_point)) point->Unadvise(m_cookie);
}

STDMETHODIMP EventLog::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*)
{
    const std::wstring name = NameOf(event);
    m_lines += (m_lines.empty() ? L"" : L"; ") + name;
    std::vector<VARIANT*> ordered;
    for (UINT index = arguments->cArgs; index-- > 0;)
        ordered.push_back(&arguments->rgvarg[index]);
    for (const VARIANT* argument : ordered) {
        const Value value(*argument);
        const bool object = V_VT(&value.Raw()) == VT_DISPATCH;
        m_lines += L" " + (object ? value.Get(L"Text").Text() : value.Text());
    }
    const auto handler = m_handlers.find(name);
    if (handler != m_handlers.end()) handler->second(ordered);
    return m_answer;
}

}  // namespace sylvex::test
