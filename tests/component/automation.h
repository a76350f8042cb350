#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "com/pointer.h"
#include "tests/component/test_object.h"

namespace sylvex::test {

/// A failure of a late-bound call: the run-time error's number, or the HRESULT when it is none.
struct Failure {
    long number;
    std::wstring description;
};

/// A value as a script holds it. Members of an object are called by name; what fails throws Failure.
class Value {
public:
    Value() { VariantInit(&m_value); }
    Value(int value) : Value() { V_VT(&m_value) = VT_I4, V_I4(&m_value) = value; }
    Value(LONGLONG value) : Value() { V_VT(&m_value) = VT_I8, V_I8(&m_value) = value; }
    Value(bool value) : Value() { V_VT(&m_value) = VT_BOOL, V_BOOL(&m_value) = value ? VARIANT_TRUE : VARIANT_FALSE; }
    Value(double value) : Value() { V_VT(&m_value) = VT_R8, V_R8(&m_value) = value; }
    Value(const wchar_t* text) : Value() { V_VT(&m_value) = VT_BSTR, V_BSTR(&m_value) = SysAllocString(text); }
    Value(const std::wstring& text) : Value(text.c_str()) {}
    /// Adds a reference. Null: nothing.
    Value(IDispatch* object);
    /// Copies, also what is given by reference.
    explicit Value(const VARIANT& source);
    Value(const Value& other) : Value(other.m_value) {}
    Value(Value&& other) noexcept : m_value(other.m_value) { VariantInit(&other.m_value); }
    Value& operator=(Value other) noexcept
    {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Value() { VariantClear(&m_value); }
    /// An optional argument that is left out.
    static Value Missing();

    VARIANT& Raw() { return m_value; }
    const VARIANT& Raw() const { return m_value; }
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
    VARIANT m_value;
};

/// The number of the error that `body` ends with; 0 when it does not fail.
long ErrorOf(const std::function<void()>& body);

/// A new control, from the component's class factory; needs no registration.
Value MakeControl();
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

/// The connection point of a control for an outgoing interface; empty when it has none.
ComPtr<IConnectionPoint> PointOf(const Value& control, const IID& outgoing);

}  // namespace sylvex::test
