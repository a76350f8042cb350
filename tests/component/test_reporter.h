#pragma once

#include <windows.h>

#include <ole2.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace sylvex::test {

/// The reporting object of this process while it lives, in place of boxes that nobody would close. It does with reports
/// what a test tells it.
class TestReporter final : public IClassFactory, public IDispatch {
public:
    /// The eight values of each report as texts.
    std::vector<std::array<std::wstring, 8>> reports;
    std::function<HRESULT()> onReport;
    HRESULT asked = S_OK;  ///< what a question for a name answers
    int actionsRead = 0;

    TestReporter();
    ~TestReporter();
    TestReporter(const TestReporter&) = delete;
    TestReporter& operator=(const TestReporter&) = delete;
    /// "Module.Procedure number" of each report, joined by "; ".
    std::wstring Trace() const;
    /// The same; forgets the reports.
    std::wstring Take();

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--m_references); }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override { return QueryInterface(id, object); }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    DWORD m_registration = 0;
    int m_references = 0;
};

}  // namespace sylvex::test
