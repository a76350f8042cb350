#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "tests/component/test_object.h"

namespace sylvex::test {

/// The reporting object of this process while it lives, in place of boxes that nobody would close. It does with reports
/// what a test tells it.
class TestReporter final : public TestDispatch<IClassFactory> {
public:
    /// The eight values of each report as texts.
    std::vector<std::array<std::wstring, 8>> reports;
    std::function<HRESULT()> onReport;
    HRESULT asked = S_OK;  ///< what a question for a name answers
    int actionsRead = 0;

    TestReporter();
    ~TestReporter();
    /// "Module.Procedure number" of each report, joined by "; ".
    std::wstring Trace() const;
    /// The same; forgets the reports.
    std::wstring Take();

    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override { return QueryInterface(id, object); }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    DWORD m_registration = 0;
};

}  // namespace sylvex::test
