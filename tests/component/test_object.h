#pragma once

#include <windows.h>

#include <ole2.h>

#include "com/dispatch.h"
#include "com/object.h"

namespace sylvex::test {

/// A test's own COM object, on its stack: answers for these interfaces, and counts the references to itself.
template <class First, class... More>
class TestObject : public First, public More... {
public:
    TestObject() = default;
    TestObject(const TestObject&) = delete;
    TestObject& operator=(const TestObject&) = delete;
    /// References that somebody else holds.
    long References() const { return m_references; }

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = FindInParts<First, More...>(this, id);
        if (*found) AddRef();
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--m_references); }

private:
    long m_references = 0;
};

/// One that late-bound callers use; it adds Invoke.
template <class... More>
using TestDispatch = TestObject<PlainDispatch, More...>;

/// An object that has another one as a part of itself, as containers extend a control.
class OuterObject final : public TestObject<IUnknown> {
public:
    IUnknown* inner = nullptr;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        return id == IID_IUnknown ? TestObject::QueryInterface(id, found) : inner->QueryInterface(id, found);
    }
};

/// A class object that makes nothing, and counts how often it was asked to.
class PlantedClass final : public TestObject<IClassFactory> {
public:
    int created = 0;

    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** object) override
    {
        ++created;
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace sylvex::test
