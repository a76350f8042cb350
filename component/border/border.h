#pragma once

#include <windows.h>

#include <ole2.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "com/error.h"
#include "com/pointer.h"
#include "com/variant.h"
#include "platform/exception_guard.h"

namespace sylvex {

/// The component's own module, whatever program has loaded it.
HINSTANCE ModuleInstance();

/// Full path of the component's file; throws ComError.
std::wstring ModulePath();

/// Leaves an error for the caller of an interface and returns `result`. The source defaults to the component's name.
HRESULT Fail(const IID& interfaceId, HRESULT result, std::wstring_view description,
             std::wstring_view source = {}) noexcept;

/// What a member answers that has nothing behind it.
HRESULT NotImplemented(const IID& interfaceId) noexcept;

/// Converts the exception being handled into an HRESULT and error information. Called from a handler only.
HRESULT FailWithCurrentException(const IID& interfaceId) noexcept;

/// Runs `body` at the component's border: no exception passes, failures become HRESULTs with error information.
/// `interfaceId` is the interface that was called; `body` returns nothing or an HRESULT.
template <class Body>
HRESULT Border(const IID& interfaceId, Body&& body) noexcept
{
    try {
        if constexpr (std::is_void_v<decltype(body())>) {
            Guarded(body);
            return S_OK;
        } else {
            return Guarded(body);
        }
    } catch (...) {
        return FailWithCurrentException(interfaceId);
    }
}

/// As above for an object that the host may let go of while `body` runs: it is kept until then, whatever becomes of
/// the body.
template <class Body>
HRESULT Border(IUnknown* kept, const IID& interfaceId, Body&& body) noexcept
{
    const ComPtr<IUnknown> alive(kept);
    return Border(interfaceId, std::forward<Body>(body));
}

/// Throws the numbered error for an object of the wrong kind.
[[noreturn]] void ThrowTypeMismatch();

/// The interface `Interface` of an object that a caller passed in; empty for null, error 13 when it has none.
/// Late-bound callers pass by-reference objects whose interface nobody checked, so ask here before any other call.
template <class Interface>
ComPtr<Interface> Incoming(IUnknown* object)
{
    ComPtr<Interface> result;
    if (!object) return result;
    const HRESULT asked = Guarded([&] { return object->QueryInterface(__uuidof(Interface), result.PutAny()); });
    if (FAILED(asked)) ThrowTypeMismatch();
    return result;
}

/// As above for an object in a variant, by value or by reference; empty for nothing and for a missing argument.
ComPtr<IUnknown> IncomingObject(const VARIANT& argument);

template <class Interface>
ComPtr<Interface> Incoming(const VARIANT& argument)
{
    return Incoming<Interface>(IncomingObject(argument).Get());
}

}  // namespace sylvex
