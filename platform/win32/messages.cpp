#include "platform/win32/messages.h"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <array>

#include "com/late_call.h"
#include "com/variant.h"
#include "platform/win32/handles.h"
#include "platform/win32/system.h"

namespace sylvex {
namespace {

ComPtr<IDispatch> CreateReporter()
{
    CLSID identifier{};
    ComPtr<IDispatch> reporter;
    if (FAILED(CLSIDFromProgID(L"Quenmark.Error", &identifier))) return reporter;
    CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, reporter.PutAny());
    return reporter;
}

void Call(IDispatch& object, const wchar_t* name, WORD kind, std::span<VARIANT> reversed, Variant& result)
{
    DISPID member = DISPID_UNKNOWN;
    if (SUCCEEDED(FindMember(object, name, member))) CallMember(object, member, kind, reversed, result.Put());
}

void HandOver(IDispatch& reporter, const ErrorReport& report)
{
    // Automation takes the last argument first.
    const std::array values{Variant(report.variables), Variant(report.description), Variant(report.number),
                            Variant(report.line),      Variant(report.procedure),   Variant(report.module),
                            Variant(report.version),   Variant(report.component)};
    std::array<VARIANT, values.size()> reversed;
    std::transform(values.begin(), values.end(), reversed.begin(), [](const Variant& value) { return value.Get(); });
    Variant ignored;
    Call(reporter, L"ErrorHandler", DISPATCH_METHOD, reversed, ignored);
}

std::wstring ActionOf(IDispatch& reporter)
{
    Variant action;
    Call(reporter, L"Action", DISPATCH_PROPERTYGET, {}, action);
    return FAILED(action.ChangeType(VT_BSTR)) ? std::wstring() : std::wstring(action.Text());
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
    HandOver(*reporter, report);
    return ActionOf(*reporter);
}

}  // namespace sylvex
