#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <span>

namespace sylvex {

/// The identifier of a member; DISPID_UNKNOWN when the object has none of this name.
inline HRESULT FindMember(IDispatch& object, const wchar_t* name, DISPID& member)
{
    member = DISPID_UNKNOWN;
    // Nobody writes to the name.
    LPOLESTR names = const_cast<LPOLESTR>(name);
    return object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
}

/// Calls a member. Arguments go in reverse order, as the platform takes them; the first of a write is the new value.
inline HRESULT CallMember(IDispatch& object, DISPID member, WORD kind, std::span<VARIANT> reversed, VARIANT* result,
                          EXCEPINFO* exception = nullptr)
{
    DISPID value = DISPID_PROPERTYPUT;
    const bool writes = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS arguments{reversed.data(), writes ? &value : nullptr, static_cast<UINT>(reversed.size()),
                         writes ? 1u : 0u};
    return object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, result, exception, nullptr);
}

/// Owns what an object tells of a call that failed.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo()
    {
        SysFreeString(m_info.bstrSource);
        SysFreeString(m_info.bstrDescription);
        SysFreeString(m_info.bstrHelpFile);
    }
    /// For an [out] argument, once.
    [[nodiscard]] EXCEPINFO* Put() { return &m_info; }
    /// What was told, all of it.
    const EXCEPINFO& Get()
    {
        if (m_info.pfnDeferredFillIn) m_info.pfnDeferredFillIn(&m_info);
        m_info.pfnDeferredFillIn = nullptr;
        return m_info;
    }

private:
    EXCEPINFO m_info{};
};

}  // namespace sylvex
