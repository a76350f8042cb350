#pragma once

#include "com/object.h"
#include "component/border/typeinfo.h"

namespace sylvex {

/// The part that answers a dual interface by name, through the type library, and for its error information.
template <class Interface>
class Dispatch : public Interface, public ISupportErrorInfo {
public:
    void* Find(const IID& id)
    {
        if (id == __uuidof(Interface) || id == IID_IDispatch || id == IID_IUnknown)
            return static_cast<Interface*>(this);
        return id == IID_ISupportErrorInfo ? static_cast<ISupportErrorInfo*>(this) : nullptr;
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override { return id == __uuidof(Interface) ? S_OK : S_FALSE; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override
    {
        return index == 0 ? CopyTypeInfo(__uuidof(Interface), info) : DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* members) override
    {
        return FindMembers(__uuidof(Interface), reserved, names, count, members);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID, WORD kind, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override
    {
        return InvokeMember(__uuidof(Interface), static_cast<Interface*>(this), member, reserved, kind,
                            {arguments, result, exception, badArgument});
    }
};

/// The part that names the class of an object, one of the type library's.
template <class Class>
class ClassInfo : public IProvideClassInfo {
public:
    void* Find(const IID& id) { return id == IID_IUnknown || Answers<IProvideClassInfo>(id) ? this : nullptr; }
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return CopyTypeInfo(__uuidof(Class), info); }
};

/// As ClassInfo, for a class with an event interface.
template <class Class, class Events>
class ClassInfoWithEvents : public IProvideClassInfo2 {
public:
    void* Find(const IID& id) { return id == IID_IUnknown || Answers<IProvideClassInfo2>(id) ? this : nullptr; }
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return CopyTypeInfo(__uuidof(Class), info); }
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override
    {
        if (!id) return E_POINTER;
        *id = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? __uuidof(Events) : GUID_NULL;
        return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
    }
};

}  // namespace sylvex
