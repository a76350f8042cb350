#pragma once

#include <windows.h>

#include <ole2.h>

namespace sylvex::test {

/// A class object on the test's stack that makes nothing, and counts how often it was asked to.
class PlantedClass final : public IClassFactory {
public:
    int created = 0;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** object) override
    {
        ++created;
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace sylvex::test
