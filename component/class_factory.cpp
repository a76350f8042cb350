#include "component/class_factory.h"

#include "com/object.h"
#include "component/startup.h"
#include "component/sylvex_object.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

class ClassFactory final : public CountedObject<IClassFactory> {
public:
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override
    {
        if (!object) return E_POINTER;
        *object = nullptr;
        // An outer object may hold nothing of its inner object but the inner identity.
        if (outer && id != IID_IUnknown) return CLASS_E_NOAGGREGATION;
        return Border(IID_IClassFactory, [&] {
            // The factory may be used on another thread than the one that asked for it.
            Main();
            return CreateSylvexObject(outer, id, object);
        });
    }
    STDMETHODIMP LockServer(BOOL lock) override
    {
        lock ? ModuleLock::Add() : ModuleLock::Release();
        return S_OK;
    }
};

}  // namespace

HRESULT CreateClassFactory(REFCLSID classId, REFIID id, void** factory) noexcept
{
    if (!factory) return E_POINTER;
    *factory = nullptr;
    if (classId != __uuidof(::Sylvex)) return CLASS_E_CLASSNOTAVAILABLE;
    return Border(IID_IClassFactory, [&] {
        Main();
        return Make<ClassFactory>()->QueryInterface(id, factory);
    });
}

}  // namespace sylvex
