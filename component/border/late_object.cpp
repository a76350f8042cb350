#include "component/border/late_object.h"

#include "com/late_call.h"
#include "platform/runtime_error.h"

#include <dispex.h>

#include <algorithm>
#include <array>
#include <utility>

namespace sylvex {

namespace {

constexpr DISPID kNotAsked = DISPID_UNKNOWN - 1000;

RuntimeError ErrorNumbered(HRESULT result)
{
    constexpr HRESULT kDisconnected = static_cast<HRESULT>(0x80010108);
    switch (result) {
        case DISP_E_UNKNOWNNAME:
        case DISP_E_MEMBERNOTFOUND:
            return {438, L"Object doesn't support this property or method"};
        case DISP_E_TYPEMISMATCH:
        case DISP_E_BADVARTYPE:
            return TypeMismatch();
        case DISP_E_BADPARAMCOUNT:
        case DISP_E_PARAMNOTOPTIONAL:
            return {kWrongArguments, L"Wrong number of arguments or invalid property assignment"};
        case DISP_E_BADINDEX:
            return SubscriptOutOfRange();
        case E_OUTOFMEMORY:
            return OutOfMemory();
        case kDisconnected:
        case CO_E_OBJNOTCONNECTED:
            return ObjectGone(L"The list view");
        default:
            if (HRESULT_FACILITY(result) != FACILITY_CONTROL) return {440, L"Automation error"};
            return {HRESULT_CODE(result), L"Application-defined or object-defined error"};
    }
}

/// What the object told of its failure.
RuntimeError ErrorTold(ExceptionInfo& exception)
{
    const EXCEPINFO& told = exception.Get();
    RuntimeError error = ErrorNumbered(told.wCode != 0 ? told.wCode : told.scode);
    if (told.wCode != 0) error.number = told.wCode;
    if (const std::wstring_view text = ViewOf(told.bstrDescription); !text.empty()) error.description = text;
    if (const std::wstring_view text = ViewOf(told.bstrSource); !text.empty()) error.source = text;
    return error;
}

/// The description of the object's class, when all objects of it have the same members.
ComPtr<ITypeInfo> ClassOf(IDispatch& object, const ComPtr<ITypeInfo>& known)
{
    ComPtr<ITypeInfo> info;
    if (FAILED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Put())) || info == known) return info;
    ComPtr<IDispatchEx> extensible;
    if (SUCCEEDED(object.QueryInterface(__uuidof(IDispatchEx), extensible.PutAny()))) return nullptr;
    return info;
}

}  // namespace

LateCaller::LateCaller(std::initializer_list<const wchar_t*> names) : m_names(names), m_members(names.size(), kNotAsked)
{
}

void LateCaller::TakeUp(const ComPtr<IDispatch>& object)
{
    if (!object) throw ObjectNotSet();
    if (object == m_object) return;
    // The last reference to the one before may run code that takes up another: released at the end.
    const ComPtr<IDispatch> before = std::exchange(m_object, object);
    const ComPtr<IDispatch> present = object;
    ComPtr<ITypeInfo> itsClass;
    Guarded([&] { itsClass = ClassOf(*present, m_class); });
    if (itsClass && itsClass == m_class) return;
    m_class = std::move(itsClass);
    std::fill(m_members.begin(), m_members.end(), kNotAsked);
}

DISPID LateCaller::Find(std::size_t member)
{
    DISPID& number = m_members[member];
    if (number != kNotAsked) return number;
    DISPID found = DISPID_UNKNOWN;
    const ComPtr<IDispatch> object = m_object;
    const HRESULT asked = Guarded([&] { return FindMember(*object, m_names[member], found); });
    return number = FAILED(asked) ? DISPID_UNKNOWN : found;
}

Variant LateCaller::Invoke(std::size_t member, WORD kind, std::span<VARIANT> reversed, bool wantsResult)
{
    const DISPID number = Find(member);
    if (number == DISPID_UNKNOWN) throw ErrorNumbered(DISP_E_UNKNOWNNAME);
    Variant result;
    ExceptionInfo told;
    // The call may run code that takes up another object.
    const ComPtr<IDispatch> object = m_object;
    VARIANT* const wanted = wantsResult ? result.Put() : nullptr;
    const HRESULT called = Guarded([&] { return CallMember(*object, number, kind, reversed, wanted, told.Put()); });
    if (called == DISP_E_EXCEPTION) throw ErrorTold(told);
    if (FAILED(called)) throw ErrorNumbered(called);
    return result;
}

Variant LateCaller::Get(std::size_t member, std::span<VARIANT> reversed)
{
    return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, reversed, true);
}

Variant LateCaller::Call(std::size_t member, std::span<VARIANT> reversed)
{
    return Invoke(member, DISPATCH_METHOD, reversed, true);
}

void LateCaller::Put(std::size_t member, const VARIANT& value)
{
    VARIANT argument = value;
    Invoke(member, DISPATCH_PROPERTYPUT, {&argument, 1}, false);
}

void LateCaller::Put(std::size_t member, long index, const VARIANT& value)
{
    std::array<VARIANT, 2> reversed{value, {}};
    V_VT(&reversed[1]) = VT_I4;
    V_I4(&reversed[1]) = index;
    Invoke(member, DISPATCH_PROPERTYPUT, reversed, false);
}

ComPtr<IDispatch> LateCaller::GetObject(std::size_t member, std::span<VARIANT> reversed)
{
    return DispatchIn(Get(member, reversed).Get());
}

ComPtr<IDispatch> DispatchIn(const VARIANT& value)
{
    return Incoming<IDispatch>(value);
}

}  // namespace sylvex
