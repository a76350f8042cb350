#include "platform/win32/com_object.h"

#include <oaidl.h>
#include <ocidl.h>

#include <memory>
#include <string>

namespace sylvex {
namespace {

struct TextFreer {
    void operator()(OLECHAR* text) const noexcept { SysFreeString(text); }
};

std::wstring NameOf(ITypeInfo* info)
{
    BSTR text = nullptr;
    if (FAILED(info->GetDocumentation(MEMBERID_NIL, &text, nullptr, nullptr, nullptr))) return {};
    const std::unique_ptr<OLECHAR, TextFreer> name(text);
    return {text, SysStringLen(text)};
}

ComPointer<ITypeInfo> TypeOf(const ComPointer<IUnknown>& object)
{
    ComPointer<ITypeInfo> info;
    if (const auto provider = object.As<IProvideClassInfo>(IID_IProvideClassInfo)) {
        if (SUCCEEDED(provider->GetClassInfo(info.Receive())) && info) return info;
    }
    if (const auto dispatch = object.As<IDispatch>(IID_IDispatch)) {
        dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Receive());
    }
    return info;
}

}  // namespace

std::wstring ComObject::ClassName() const
{
    const auto info = TypeOf(m_object);
    if (!info) return {};
    auto name = NameOf(info.Get());
    // A class's default interface carries the class's name behind an underscore.
    if (name.size() > 1 && name.front() == L'_') name.erase(0, 1);
    return name;
}

IUnknown* UnknownOf(const ObjectRef& object) noexcept
{
    const auto* const known = dynamic_cast<const ComObject*>(object.get());
    return known ? known->Get() : nullptr;
}

}  // namespace sylvex
