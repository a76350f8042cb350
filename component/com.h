#pragma once

#include <windows.h>

#include <ole2.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/exception_guard.h"

namespace sylvex {

/// A failure that leaves as the given HRESULT instead of as a numbered error. `result` must be a failure code.
struct ComError {
    HRESULT result;
};

/// A counted reference to a COM object; empty when it refers to nothing.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// Adds a reference of its own.
    explicit ComPtr(Interface* object) : m_object(object) { AddReference(); }
    ComPtr(const ComPtr& other) : ComPtr(other.m_object) {}
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~ComPtr() { Reset(); }
    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /// Takes over a reference that the caller owns.
    static ComPtr Adopt(Interface* object)
    {
        ComPtr result;
        result.m_object = object;
        return result;
    }
    /// Gives the reference to the caller, who must release it.
    [[nodiscard]] Interface* Detach() { return std::exchange(m_object, nullptr); }
    void Reset()
    {
        // Emptied first: the release may run code that looks at this pointer.
        if (Interface* const object = Detach()) object->Release();
    }
    /// For an [out] argument; drops what is held.
    [[nodiscard]] Interface** Put()
    {
        Reset();
        return &m_object;
    }
    /// The object's interface `Other`, or empty when it has none.
    template <class Other>
    ComPtr<Other> As() const
    {
        ComPtr<Other> other;
        if (m_object) m_object->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(other.Put()));
        return other;
    }
    /// Stores a new reference in an [out] argument.
    template <class Target>
    void CopyTo(Target** target) const
    {
        *target = m_object;
        if (m_object) m_object->AddRef();
    }

    Interface* Get() const { return m_object; }
    Interface* operator->() const { return m_object; }
    Interface& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const ComPtr& left, const ComPtr& right) { return left.m_object == right.m_object; }

private:
    void AddReference()
    {
        if (m_object) m_object->AddRef();
    }
    Interface* m_object = nullptr;
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
    Variant() { VariantInit(&m_value); }
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
    VARIANT m_value;
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
    if (FAILED(object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(result.Put()))))
        ThrowTypeMismatch();
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
