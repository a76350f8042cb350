#include "host/script_objects.h"

#include <cstring>
#include <vector>

#include "host/automation.h"
#include "host/event_sink.h"
#include "host/script.h"
#include "SylvexControl_h.h"

namespace sylvex::host {
namespace {

enum Member : DISPID { Echo = 1, Log, Wait, Quit, ListWindow };

constexpr const wchar_t* kMembers[] = {L"Echo", L"Log", L"Wait", L"Quit", L"ListWindow"};

}  // namespace

STDMETHODIMP HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members)
{
    return FindName(kMembers, names, count, members);
}

STDMETHODIMP HostObject::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                                UINT*)
{
    if (!arguments) return E_POINTER;
    if (member < Echo || member > ListWindow) return DISP_E_MEMBERNOTFOUND;
    if (member == ListWindow) {
        if (result) *result = ValueOf(m_services.list).Detach();
        return S_OK;
    }
    if (arguments->cArgs > 1 || (arguments->cArgs == 0 && member != Quit)) return DISP_E_BADPARAMCOUNT;
    try {
        return Do(member, arguments->cArgs == 1 ? &arguments->rgvarg[0] : nullptr);
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

HRESULT HostObject::Do(DISPID member, VARIANT* argument)
{
    Variant value;
    if (argument) {
        const VARTYPE wanted = member == Wait || member == Quit ? VT_I4 : VT_BSTR;
        if (FAILED(VariantCopyInd(value.Put(), argument))) return DISP_E_TYPEMISMATCH;
        if (FAILED(value.ChangeType(wanted))) return DISP_E_TYPEMISMATCH;
    }
    const std::wstring text(value.Text());
    const int number = value.Type() == VT_I4 ? V_I4(&value.Get()) : 0;
    switch (member) {
        case Echo:
            m_services.echo(text);
            return S_OK;
        case Log:
            m_services.log(text);
            return S_OK;
        case Wait:
            m_services.wait(number);
            return S_OK;
        default:
            m_services.quit(number);
            return S_OK;
    }
}

namespace {

/// Bytes of a number of that type; 0 for anything else.
std::size_t SizeOf(VARTYPE type)
{
    switch (type) {
        case VT_I2:
        case VT_BOOL:
            return sizeof(SHORT);
        case VT_I4:
        case VT_R4:
            return sizeof(LONG);
        default:
            return 0;
    }
}

/// An event's arguments as scripts take them: they know references to values of any type only, so what refers to a
/// number becomes one of those, and gets back what the script has made of it.
class ScriptArguments {
public:
    explicit ScriptArguments(const DISPPARAMS& given)
        : m_given(given), m_values(given.cArgs), m_passed(given.rgvarg, given.rgvarg + given.cArgs)
    {
        for (std::size_t i = 0; i < m_passed.size(); ++i) {
            if (!IsNumberReference(i) || FAILED(VariantCopyInd(m_values[i].Put(), &m_passed[i]))) continue;
            V_VT(&m_passed[i]) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&m_passed[i]) = &m_values[i].Get();
        }
    }
    ScriptArguments(const ScriptArguments&) = delete;
    ScriptArguments& operator=(const ScriptArguments&) = delete;
    std::span<VARIANT> Get() { return m_passed; }
    void WriteBack()
    {
        for (std::size_t i = 0; i < m_passed.size(); ++i) {
            const VARTYPE type = V_VT(&m_given.rgvarg[i]) & VT_TYPEMASK;
            if (!IsNumberReference(i) || FAILED(m_values[i].ChangeType(type))) continue;
            std::memcpy(V_BYREF(&m_given.rgvarg[i]), &V_I4(&m_values[i].Get()), SizeOf(type));
        }
    }

private:
    bool IsNumberReference(std::size_t i) const
    {
        const VARTYPE type = V_VT(&m_given.rgvarg[i]);
        return (type & VT_BYREF) != 0 && SizeOf(type & VT_TYPEMASK) > 0;
    }

    const DISPPARAMS& m_given;
    std::vector<Variant> m_values;
    std::vector<VARIANT> m_passed;
};

}  // namespace

STDMETHODIMP ScriptEvents::Invoke(DISPID event, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                  UINT*)
{
    if ((kind & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    if (!arguments) return E_POINTER;
    try {
        // The procedure may serve messages, and with them the end of the form.
        const std::shared_ptr<void> held = m_hold();
        const std::wstring name = L"Sylvex_" + EventName(event);
        ScriptArguments passed(*arguments);
        const HRESULT called = m_script.Call(name, passed.Get());
        passed.WriteBack();
        const std::wstring error = m_script.TakeError();
        if (FAILED(called)) m_failed(error.empty() ? name + L" failed" : error);
        return called == S_FALSE ? S_OK : called;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

}  // namespace sylvex::host
