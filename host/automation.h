#pragma once

#include <string>
#include <string_view>

#include "com/variant.h"
#include "host/failure.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

/// An automation call that failed. The message has the member, the number and the description; a numbered error shows
/// its number, anything else its HRESULT.
class AutomationError : public Failure {
public:
    /// An empty description stands for what the system says.
    AutomationError(std::wstring_view member, HRESULT result, const std::wstring& description);
};

/// Throws AutomationError, with what the object said about it, when the call of `member` failed.
void Check(HRESULT result, std::wstring_view member);

/// Writes a property by reference, or by value where the object takes no references; throws AutomationError.
void PutProperty(IDispatch& object, const std::wstring& member, Variant value);
/// Name of a member, or its number when the object cannot tell.
std::wstring MemberName(IDispatch& object, DISPID member);

/// Reads a text from an automation object: `getter` is the member function that returns a BSTR. Throws AutomationError.
template <class Object, class Interface>
std::wstring ReadText(Object& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*), std::wstring_view member)
{
    Bstr text;
    Check((object.*getter)(text.Put()), member);
    return text.Text();
}

/// Reads a flag in the same way.
template <class Object, class Interface>
bool ReadFlag(Object& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(VARIANT_BOOL*), std::wstring_view member)
{
    VARIANT_BOOL flag = VARIANT_FALSE;
    Check((object.*getter)(&flag), member);
    return flag != VARIANT_FALSE;
}

/// Reads an object in the same way; it may be nothing.
template <class Object, class Interface, class Result>
ComPtr<Result> ReadObject(Object& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(Result**),
                          std::wstring_view member)
{
    ComPtr<Result> result;
    Check((object.*getter)(result.Put()), member);
    return result;
}

/// Reads an object that comes in a value in the same way.
template <class Result, class Object, class Interface>
ComPtr<Result> ReadValue(Object& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(VARIANT*),
                         std::wstring_view member)
{
    Variant value;
    Check((object.*getter)(value.Put()), member);
    ComPtr<Result> result = value.As<Result>();
    if (!result) throw AutomationError(member, E_NOINTERFACE, {});
    return result;
}

/// The automation form of a window's handle: of 32 bits everywhere, and scripts know no longer numbers.
inline Variant ValueOf(HWND window)
{
    return Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(window)));
}

/// The automation form of a flag.
constexpr VARIANT_BOOL FlagOf(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace sylvex::host
