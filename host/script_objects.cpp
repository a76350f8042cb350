#include "host/script_objects.h"

#include "host/event_sink.h"
#include "host/script.h"
#include "SylvexControl_h.h"

namespace sylvex::host {
namespace {

enum Member : DISPID { Echo = 1, Log, Wait, Quit, ListWindow };

struct MemberName {
    const wchar_t* name;
    Member member;
};
constexpr MemberName kMembers[] = {
    {L"Echo", Echo}, {L"Log", Log}, {L"Wait", Wait}, {L"Quit", Quit}, {L"ListWindow", ListWindow}};

HRESULT NoTypeInfo(UINT* count)
{
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT NoTypeInfo(ITypeInfo** info)
{
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

}  // namespace

STDMETHODIMP HostObject::GetTypeInfoCount(UINT* count)
{
    return NoTypeInfo(count);
}

STDMETHODIMP HostObject::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    return NoTypeInfo(info);
}

STDMETHODIMP HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members)
{
    if (count == 0 || !names || !members) return E_INVALIDARG;
    for (UINT index = 0; index < count; ++index)
        members[index] = DISPID_UNKNOWN;
    for (const MemberName& known : kMembers)
        if (lstrcmpiW(names[0], known.name) == 0) members[0] = known.member;
    return count == 1 && members[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP HostObject::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                                UINT*)
{
    if (!arguments) return E_POINTER;
    if (member < Echo || member > ListWindow) return DISP_E_MEMBERNOTFOUND;
    if (member == ListWindow) {
        if (!result) return S_OK;
        Variant window(m_services.list);
        return VariantCopy(result, &window.Get());
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
        if (FAILED(VariantChangeType(&value.Get(), &value.Get(), 0, wanted))) return DISP_E_TYPEMISMATCH;
    }
    const bool isText = V_VT(&value.Get()) == VT_BSTR && V_BSTR(&value.Get());
    const std::wstring text = isText ? V_BSTR(&value.Get()) : L"";
    const int number = V_VT(&value.Get()) == VT_I4 ? V_I4(&value.Get()) : 0;
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

STDMETHODIMP ScriptEvents::QueryInterface(REFIID id, void** found)
{
    const HRESULT result = Answer<IDispatch>(this, id, found);
    if (result != E_NOINTERFACE || id != DIID___Sylvex) return result;
    *found = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP ScriptEvents::GetTypeInfoCount(UINT* count)
{
    return NoTypeInfo(count);
}

STDMETHODIMP ScriptEvents::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    return NoTypeInfo(info);
}

STDMETHODIMP ScriptEvents::Invoke(DISPID event, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                  UINT*)
{
    if ((kind & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    if (!arguments) return E_POINTER;
    try {
        const std::wstring name = L"Sylvex_" + EventName(event);
        const HRESULT called = m_script.Call(name, *arguments);
        const std::wstring error = m_script.TakeError();
        if (FAILED(called)) m_failed(error.empty() ? name + L" failed" : error);
        return called == S_FALSE ? S_OK : called;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

}  // namespace sylvex::host
