#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <span>

namespace sylvex {

/// The part of an object that answers IDispatch without a type library. Members have no names unless the object gives
/// them some; it adds Invoke.
class PlainDispatch : public IDispatch {
public:
    void* Find(const IID& id)
    {
        return id == IID_IUnknown || id == IID_IDispatch ? static_cast<IDispatch*>(this) : nullptr;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override
    {
        if (info) *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
};

/// As PlainDispatch, for a sink of an interface of events.
template <class Events>
class EventDispatch : public PlainDispatch {
public:
    void* Find(const IID& id)
    {
        return id == __uuidof(Events) ? static_cast<IDispatch*>(this) : PlainDispatch::Find(id);
    }
};

/// IDispatch::GetIDsOfNames of an object whose members are numbered from 1 in the order of these names.
inline HRESULT FindName(std::span<const wchar_t* const> known, LPOLESTR* names, UINT count, DISPID* members)
{
    if (!names || !members || count == 0) return E_INVALIDARG;
    for (UINT index = 0; index < count; ++index)
        members[index] = DISPID_UNKNOWN;
    for (std::size_t index = 0; index < known.size(); ++index)
        if (lstrcmpiW(names[0], known[index]) == 0) members[0] = static_cast<DISPID>(index) + 1;
    return count == 1 && members[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
}

}  // namespace sylvex
