#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

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
    Value(int value);
    Value(LONGLONG value);
    Value(bool value);
    Value(double value);
    Value(const wchar_t* text);
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

    Value Get(const wchar_t* name, std::vector<Value> arguments = {}) const;
    Value Call(const wchar_t* name, std::vector<Value> arguments = {}) const;
    void Put(const wchar_t* name, const Value& value) const;
    /// With a reference to an object.
    void Set(const wchar_t* name, const Value& value) const;
    /// What For Each meets.
    std::vector<Value> Each() const;

private:
    Value Invoke(const wchar_t* name, WORD kind, std::vector<Value>& arguments) const;
    VARIANT m_value;
};

/// The number of the error that `body` ends with; 0 when it does not fail.
long ErrorOf(const std::function<void()>& body);

/// A new control, from the component's class factory.
Value MakeControl();
/// The same as a part of another object; the caller owns its inner identity. Null on failure.
IUnknown* MakeInnerControl(IUnknown& outer);
/// Locks and objects that keep the component in memory.
bool ComponentIsBusy();

/// Listens to the events of a control, each as a line: its name, and its arguments' texts (of a node: its text).
class EventLog : public IDispatch {
public:
    /// What is done when an event comes, with its arguments in order.
    using Handler = std::function<void(std::vector<VARIANT*>& arguments)>;

    /// Connects to the control; throws Failure. Lives on the stack.
    explicit EventLog(const Value& control);
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    void On(const wchar_t* event, Handler handler) { m_handlers[event] = std::move(handler); }
    /// What this sink answers to every event.
    void Answer(HRESULT answer) { m_answer = answer; }
    void Disconnect();
    /// The lines so far, joined by "; ", which it forgets.
    std::wstring Take();

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() override { return --m_references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override;
    /// References that the control (or whoever else) still holds.
    ULONG References() const { return m_references; }

private:
    IConnectionPoint* m_point = nullptr;
    DWORD m_cookie = 0;
    ULONG m_references = 0;
    HRESULT m_answer = S_OK;
    std::wstring m_lines;
    std::map<std::wstring, Handler> m_handlers;
};

/// The connection point of a control for an outgoing interface; null when it has none. The caller releases it.
IConnectionPoint* PointOf(const Value& control, const IID& outgoing);

}  // namespace sylvex::test
