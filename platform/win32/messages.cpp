#include "platform/win32/messages.h"

#include <windows.h>

#include <oleauto.h>

#include <array>

#include "platform/win32/com_pointer.h"
#include "platform/win32/handles.h"
#include "platform/win32/system.h"

namespace sylvex {
namespace {

class Variant : public VARIANT {
public:
    Variant() noexcept { VariantInit(this); }
    ~Variant() { VariantClear(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    void Set(const std::wstring& text)
    {
        bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        vt = VT_BSTR;
    }
    void Set(long number)
    {
        lVal = number;
        vt = VT_I4;
    }
};

ComPtr<IDispatch> CreateReporter()
{
    CLSID identifier{};
    ComPtr<IDispatch> reporter;
    if (FAILED(CLSIDFromProgID(L"Quenmark.Error", &identifier))) return reporter;
    CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, reporter.PutAny());
    return reporter;
}

void Call(IDispatch* object, const wchar_t* name, WORD kind, DISPPARAMS& parameters, VARIANT& result)
{
    auto* text = Writable(name);
    DISPID member = DISPID_UNKNOWN;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member))) return;
    object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result, nullptr, nullptr);
}

void HandOver(IDispatch* reporter, const ErrorReport& report)
{
    // Automation takes the last argument first.
    std::array<Variant, 8> values;
    values[7].Set(report.component);
    values[6].Set(report.version);
    values[5].Set(report.module);
    values[4].Set(report.procedure);
    values[3].Set(report.line);
    values[2].Set(report.number);
    values[1].Set(report.description);
    values[0].Set(report.variables);
    DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    Variant ignored;
    Call(reporter, L"ErrorHandler", DISPATCH_METHOD, parameters, ignored);
}

std::wstring ActionOf(IDispatch* reporter)
{
    DISPPARAMS none{};
    Variant action;
    Call(reporter, L"Action", DISPATCH_PROPERTYGET, none, action);
    if (FAILED(VariantChangeType(&action, &action, 0, VT_BSTR)) || action.bstrVal == nullptr) return {};
    return {action.bstrVal, SysStringLen(action.bstrVal)};
}

}  // namespace

int Win32MessageBoxes::Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style)
{
    auto* const window = IsWindow(WindowOf(owner)) ? WindowOf(owner) : nullptr;
    const auto title = caption.empty() ? Win32System().ProgramName() : caption;
    // Without an owner it would leave the host's windows in use.
    const UINT modality = window == nullptr ? MB_TASKMODAL : MB_APPLMODAL;
    return MessageBoxW(window, text.c_str(), title.c_str(), style | modality);
}

std::optional<std::wstring> Win32Reporter::Report(const ErrorReport& report)
{
    const auto reporter = CreateReporter();
    if (!reporter) return std::nullopt;
    HandOver(reporter.Get(), report);
    return ActionOf(reporter.Get());
}

}  // namespace sylvex
