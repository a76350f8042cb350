#include "host/automation.h"

#include <cstdio>

#include "com/late_call.h"
#include "com/type_info.h"
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

[[noreturn]] void ThrowTold(const std::wstring& member, ExceptionInfo& exception)
{
    const EXCEPINFO& told = exception.Get();
    const HRESULT result = told.scode ? told.scode : MAKE_HRESULT(SEVERITY_ERROR, kNumberedFacility, told.wCode);
    throw AutomationError(member, result, std::wstring(ViewOf(told.bstrDescription)));
}

}  // namespace

AutomationError::AutomationError(std::wstring_view member, HRESULT result, const std::wstring& description)
    : Failure(MessageOf(member, result, description.empty() ? DescribeResult(result) : description))
{
}

void Check(HRESULT result, std::wstring_view member)
{
    if (FAILED(result)) throw AutomationError(member, result, TakeDescription());
}

void PutProperty(IDispatch& object, const std::wstring& member, Variant value)
{
    DISPID id = DISPID_UNKNOWN;
    Check(FindMember(object, member.c_str(), id), member);
    HRESULT result = DISP_E_MEMBERNOTFOUND;
    for (const WORD kind : {DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}) {
        ExceptionInfo exception;
        result = CallMember(object, id, kind, {&value.Get(), 1}, nullptr, exception.Put());
        if (result == DISP_E_EXCEPTION) ThrowTold(member, exception);
        if (result != DISP_E_MEMBERNOTFOUND) break;
    }
    Check(result, member);
}

std::wstring MemberName(IDispatch& object, DISPID member)
{
    ComPtr<ITypeInfo> info;
    const HRESULT got = object.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Put());
    const std::wstring name = SUCCEEDED(got) ? NameOf(*info, member) : std::wstring();
    return name.empty() ? std::to_wstring(member) : name;
}

}  // namespace sylvex::host
