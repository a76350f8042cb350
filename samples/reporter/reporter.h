#pragma once

#include <windows.h>

#include <oaidl.h>

#include <atomic>

/// Objects and locks that keep this module in memory.
extern std::atomic<long> g_inUse;

/// Takes error reports and appends each to a text file. The control makes one object a report.
class Reporter final : public IDispatch {
public:
    Reporter() { ++g_inUse; }

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    ~Reporter() { --g_inUse; }
    std::atomic<long> m_references{1};
};
