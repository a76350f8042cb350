#pragma once

#include <windows.h>

#include <ole2.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/exception_guard.h"
#include "platform/win32/com_pointer.h"

namespace sylvex {

/// A failure that leaves as the given HRESULT instead of as a numbered error. `result` must be a failure code.
struct ComError {
    HRESULT result;
};

/// Owns a BSTR. A null BSTR is the empty text.
class Bstr {
public:
    Bstr() = default;
    /// Copies the text; throws std::bad_alloc.
    explicit Bstr(std::wstring_view text);
    Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    Bstr& operator=(Bstr other) noexcept
    {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    BSTR Get() const { return m_text; }
    /// For an [out] argument; frees what is held.
    [[nodiscard]] BSTR* Put();
    /// Gives the text to the caller, who must free it.
    [[nodiscard]] BSTR Detach() { return std::exchange(m_text, nullptr); }
    std::wstring_view View() const;

private:
    BSTR m_text = nullptr;
};

/// The text of a BSTR that somebody else owns, which may be null.
std::wstring_view ViewOf(BSTR text);

/// Owns a VARIANT.
class Variant {
public:
    Variant() = default;
    explicit Variant(bool value);
    explicit Variant(long value);
    /// Copies the text; throws std::bad_alloc.
    explicit Variant(std::wstring_view text);
    /// Adds a reference; null gives an object that is nothing.
    explicit Variant(IDispatch* object);
    /// Copies what a by-reference variant refers to; throws ComError.
    explicit Variant(const VARIANT& source);
    Variant(const Variant& other) : Variant(other.m_value) {}
    Variant(Variant&& other) noexcept : m_value(other.Detach()) {}
    Variant& operator=(Variant other) noexcept
    {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Variant() { VariantClear(&m_value); }

    VARTYPE Type() const { return V_VT(&m_value); }
    const VARIANT& Get() const { return m_value; }
    VARIANT& Get() { return m_value; }
    /// For an [out] argument; clears what is held.
    [[nodiscard]] VARIANT* Put();
    /// Gives the value to the caller, who must clear it.
    [[nodiscard]] VARIANT Detach();

private:
    VARIANT m_value{};
};

/// Whether an optional argument was left out.
bool IsMissing(const VARIANT& argument);

/// Keeps the component in memory while it exists.
class ModuleLock {
public:
    ModuleLock() { Add(); }
    ModuleLock(const ModuleLock&) : ModuleLock() {}
    ModuleLock& operator=(const ModuleLock&) = default;
    ~ModuleLock() { Release(); }

    static void Add();
    static void Release();
    /// Number of locks in force in this process.
    static long Count();
};

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

/// The object behind an [out] or [in, out] pointer; throws ComError(E_POINTER) for null.
template <class Value>
Value& Checked(Value* pointer)
{
    if (!pointer) throw ComError{E_POINTER};
    return *pointer;
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
