#include "host/automation.h"

#include <cstdio>

#include "host/system_text.h"

namespace sylvex::host {
namespace {

/// Facility of run-time errors that have a number.
constexpr int kNumberedFacility = FACILITY_CONTROL;

std::wstring NumberOf(HRESULT result)
{
    if (HRESULT_FACILITY(result) == kNumberedFacility) return std::to_wstring(HRESULT_CODE(result));
    wchar_t text[16];
    std::swprintf(text, std::size(text), L"0x%08lX", static_cast<unsigned long>(result));
    return text;
}

std::wstring MessageOf(std::wstring_view member, HRESULT result, const std::wstring& description)
{
    return std::wstring(member) + L": error " + NumberOf(result) + (description.empty() ? L"" : L", ") + description;
}

/// Description that the failing object left behind, or empty.
std::wstring TakeDescription()
{
    ComPtr<IErrorInfo> info;
    Bstr description;
    if (GetErrorInfo(0, info.Put()) == S_OK) info->GetDescription(description.Put());
    return description.Text();
}

/// Owns what an object says about a failed Invoke.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo()
    {
        SysFreeString(m_info.bstrSource);
        SysFreeString(m_info.bstrDescription);
        SysFreeString(m_info.bstrHelpFile);
    }
    EXCEPINFO* Put() { return &m_info; }
    [[noreturn]] void Throw(const std::wstring& member)
    {
        if (m_info.pfnDeferredFillIn) m_info.pfnDeferredFillIn(&m_info);
        const HRESULT result =
            m_info.scode ? m_info.scode : MAKE_HRESULT(SEVERITY_ERROR, kNumberedFacility, m_info.wCode);
        throw AutomationError(member, result, m_info.bstrDescription ? m_info.bstrDescription : L"");
    }

private:
    EXCEPINFO m_info{};
};

}  // namespace

AutomationError::AutomationError(std::wstring_view member, HRESULT result, const std::wstring& description)
    : Failure(MessageOf(member, result, description.empty() ? DescribeResult(result) : description))
{
}

void Check(HRESULT result, std::wstring_view member)
{
    if (FAILED(result)) throw AutomationError(member, result, TakeDescription());
}

void LateBound::Put(const std::wstring& member, Variant&& value)
{
    const DISPID id = Find(member);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{&value.Get(), &named, 1, 1};

    HRESULT result = DISP_E_MEMBERNOTFOUND;
    for (const WORD kind : {DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}) {
        ExceptionInfo exception;
        result =
            m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, nullptr, exception.Put(), nullptr);
        if (result == DISP_E_EXCEPTION) exception.Throw(member);
        if (result != DISP_E_MEMBERNOTFOUND) break;
    }
    Check(result, member);
}

std::wstring LateBound::NameOf(DISPID member) const
{
    ComPtr<ITypeInfo> info;
    Bstr name;
    UINT count = 0;
    if (SUCCEEDED(m_object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Put()))) {
        info->GetNames(member, name.Put(), 1, &count);
    }
    return count == 1 ? name.Text() : std::to_wstring(member);
}

DISPID LateBound::Find(const std::wstring& member)
{
    if (const auto known = m_members.find(member); known != m_members.end()) return known->second;
    DISPID id = DISPID_UNKNOWN;
    std::wstring name = member;
    wchar_t* names = name.data();
    Check(m_object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), member);
    m_members.emplace(member, id);
    return id;
}

}  // namespace sylvex::host
