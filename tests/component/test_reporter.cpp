#include "tests/component/test_reporter.h"

#include <gtest/gtest.h>

#include <iterator>

#include "tests/component/automation.h"

namespace sylvex::test {
namespace {

constexpr CLSID kClass = {0x9b0d1a44, 0x06c5, 0x4f5c, {0xb1, 0x7a, 0x3e, 0x90, 0x55, 0x12, 0xd8, 0x6f}};
constexpr wchar_t kName[] = L"Quenmark.Error";
constexpr DISPID kErrorHandler = 1;
constexpr DISPID kAction = 2;

}  // namespace

TestReporter::TestReporter()
{
    wchar_t id[39];
    StringFromGUID2(kClass, id, static_cast<int>(std::size(id)));
    const std::wstring key = std::wstring(kName) + L"\\CLSID";
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, id, sizeof id);
    CoRegisterClassObject(kClass, static_cast<IClassFactory*>(this), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                          &m_registration);
}

TestReporter::~TestReporter()
{
    CoRevokeClassObject(m_registration);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kName);
    EXPECT_EQ(References(), 0);
}

std::wstring TestReporter::Trace() const
{
    std::wstring trace;
    for (const auto& report : reports)
        trace += (trace.empty() ? L"" : L"; ") + report[2] + L"." + report[3] + L" " + report[5];
    return trace;
}

std::wstring TestReporter::Take()
{
    const std::wstring trace = Trace();
    reports.clear();
    return trace;
}

STDMETHODIMP TestReporter::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members)
{
    *members = lstrcmpW(names[0], L"ErrorHandler") == 0 ? kErrorHandler : kAction;
    return asked;
}

STDMETHODIMP TestReporter::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                  EXCEPINFO*, UINT*)
{
    if (member == kAction) {
        EXPECT_EQ(flags, DISPATCH_PROPERTYGET);
        ++actionsRead;
        V_VT(result) = VT_I4, V_I4(result) = 5;  // any value that has a text will do
        return S_OK;
    }
    EXPECT_EQ(arguments->cArgs, 8u);
    std::array<std::wstring, 8> report;
    for (UINT i = 0; i < 8; ++i)
        report[i] = Value(arguments->rgvarg[7 - i]).Text();
    reports.push_back(report);
    return onReport ? onReport() : S_OK;
}

}  // namespace sylvex::test
