#pragma once

#include <functional>
#include <vector>

#include "tests/component/test_container.h"

namespace sylvex::test {

/// A sink for the control's events, on the test's stack: writes down the keys that go down, and runs something on each.
class KeySink final : public IDispatch {
public:
    std::function<void()> onKey;
    std::vector<short> keys;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(::__Sylvex);
        *found = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override
    {
        constexpr DISPID keyDown = 9;
        if (event != keyDown) return S_OK;
        keys.push_back(*V_I2REF(&arguments->rgvarg[1]));
        if (onKey) onKey();
        return S_OK;
    }
    void Connect(const Embedded& embedded)
    {
        ComPtr<IConnectionPoint> point;
        embedded.As<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(::__Sylvex), point.Put());
        DWORD cookie = 0;
        ASSERT_HRESULT_SUCCEEDED(point->Advise(this, &cookie));
    }
};

}  // namespace sylvex::test
