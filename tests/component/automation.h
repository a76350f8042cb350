#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "com/variant.h"
#include "tests/component/test_object.h"

namespace sylvex::test {

/// Numbers of run-time errors.
constexpr long kTypeMismatch = 13;
constexpr long kObjectNotSet = 91;
constexpr long kInvalidValue = 380;
constexpr long kIndexOutOfBounds = 35600;
constexpr long kElementNotFound = 35601;
constexpr long kKeyNotUnique = 35602;
constexpr long kGone = 35605;
constexpr long kPassedOn = 65535;  ///< reported where it happened

/// A failure of a late-bound call: the run-time error's number, or the HRESULT when it is none.
struct Failure {
    long number;
    std::wstring description;
};

/// A value as a script holds it. Members of an object are called by name; what fails throws Failure.
class Value {
public:
    Value() = default;
    Value(int value) : m_value(static_cast<long>(value)) {}
    Value(LONGLONG value) { V_VT(&Raw()) = VT_I8, V_I8(&Raw()) = value; }
    Value(bool value) : m_value(value) {}
    Value(double value) { V_VT(&Raw()) = VT_R8, V_R8(&Raw()) = value; }
    Value(const wchar_t* text) : m_value(text) {}
    Value(const std::wstring& text) : m_value(text) {}
    /// A window's handle as a number.
    Value(HWND window) : Value(static_cast<int>(reinterpret_cast<INT_PTR>(window))) {}
    /// Adds a reference. Null: nothing.
    Value(IDispatch* object) : m_value(object) {}
    /// Copies, also what is given by reference; throws ComError.
    explicit Value(const VARIANT& source) : m_value(source) {}
    static Value Nothing() { return static_cast<IDispatch*>(nullptr); }
    /// An optional argument that is left out.
    static Value Missing() { return Value(MissingArgument()); }

    VARIANT& Raw() { return m_value.Get(); }
    const VARIANT& Raw() const { return m_value.Get(); }
    std::wstring Text() const;
    int Number() const;
    bool Flag() const;
    bool IsNothing() const;
    /// Null for nothing; throws Failure 13 when it is no object.
    IDispatch* Object() const;
    /// Whether both are the same object.
    bool Is(const Value& other) const;

    Value Get(const wchar_t* name, std::vector<Value> arguments = {}) const
    {
        return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
    }
    Value Call(const wchar_t* name, std::vector<Value> arguments = {}) const
    {
        return Invoke(name, DISPATCH_METHOD, arguments);
    }
    void Put(const wchar_t* name, const Value& value) const { Write(name, DISPATCH_PROPERTYPUT, value); }
    /// With a reference to an object.
    void Set(const wchar_t* name, const Value& value) const { Write(name, DISPATCH_PROPERTYPUTREF, value); }
    /// What For Each meets.
    ComPtr<IEnumVARIANT> Enumerator() const;
    std::vector<Value> Each() const;

private:
    Value Invoke(const wchar_t* name, WORD kind, std::vector<Value>& arguments) const;
    void Write(const wchar_t* name, WORD kind, const Value& value) const
    {
        std::vector<Value> arguments{value};
        Invoke(name, kind, arguments);
    }
    Variant m_value;
};

/// A reference to a place of this type.
inline VARIANT ReferenceTo(VARTYPE type, void* place)
{
    VARIANT reference{};
    V_VT(&reference) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&reference) = place;
    return reference;
}

/// The number of the error that `body` ends with; 0 when it does not fail.
long ErrorOf(const std::function<void()>& body);

/// A new control, from the component's class factory; needs no registration.
Value MakeControl();
/// The nodes of a control's tree.
inline Value NodesOf(const Value& control)
{
    return control.Get(L"TreeView").Get(L"Nodes");
}
/// Adds a root, or a child of `parent`.
Value AddNode(const Value& nodes, const Value& text, const Value& parent = Value::Missing());
/// Locks and objects that keep the component in memory.
bool ComponentIsBusy();
/// The window of a control's tree, or of a list.
HWND WindowOf(const Value& object);

/// Listens to the events of a control, each as a line: its name, and its arguments' texts (of a node: its text).
class EventLog : public TestDispatch<> {
public:
    /// What is done when an event comes, with its arguments in order.
    using Handler = std::function<void(std::vector<VARIANT*>& arguments)>;

    /// Connects to the control; throws Failure. Lives on the stack.
    explicit EventLog(const Value& control);
    ~EventLog();

    void On(const wchar_t* event, Handler handler) { m_handlers[event] = std::move(handler); }
    /// What this sink answers to every event.
    void Answer(HRESULT answer) { m_answer = answer; }
    void Disconnect();
    /// The lines so far, joined by "; ", which it forgets.
    std::wstring Take() { return std::exchange(m_lines, {}); }

    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override;

private:
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
    HRESULT m_answer = S_OK;
    std::wstring m_lines;
    std::map<std::wstring, Handler> m_handlers;
};

/// A text of plain letters.
inline std::string Narrow(std::wstring_view wide)
{
    return {wide.begin(), wide.end()};
}

/// The connection point of a control for an outgoing interface; empty when it has none.
ComPtr<IConnectionPoint> PointOf(const Value& control, const IID& outgoing);

}  // namespace sylvex::test
