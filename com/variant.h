#pragma once

#include <concepts>

#include "com/bstr.h"
#include "com/error.h"
#include "com/pointer.h"
#include "platform/exception_guard.h"

namespace sylvex {

/// Owns a VARIANT.
class Variant {
public:
    Variant() = default;
    /// Not for pointers, which are true.
    explicit Variant(std::same_as<bool> auto value)
    {
        V_VT(&m_value) = VT_BOOL;
        V_BOOL(&m_value) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit Variant(long value)
    {
        V_VT(&m_value) = VT_I4;
        V_I4(&m_value) = value;
    }
    /// Copies the text; throws std::bad_alloc.
    explicit Variant(std::wstring_view text)
    {
        V_BSTR(&m_value) = Bstr(text).Detach();
        V_VT(&m_value) = VT_BSTR;
    }
    /// Adds a reference; null gives an object that is nothing.
    explicit Variant(IDispatch* object)
    {
        V_VT(&m_value) = VT_DISPATCH;
        V_DISPATCH(&m_value) = object;
        if (object) object->AddRef();
    }
    /// Copies what a by-reference variant refers to; throws ComError.
    explicit Variant(const VARIANT& source) : Variant()
    {
        // Some SDK headers leave out the const of the source, which is only read.
        Check(Guarded([&] { return VariantCopyInd(&m_value, const_cast<VARIANT*>(&source)); }));
    }
    Variant(const Variant& other) : Variant(other.m_value) {}
    Variant(Variant&& other) noexcept : m_value(other.Detach()) {}
    Variant& operator=(Variant other) noexcept
    {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Variant() { VariantClear(&m_value); }

    VARTYPE Type() const { return V_VT(&m_value); }
    bool IsObject() const { return Type() == VT_DISPATCH || Type() == VT_UNKNOWN; }
    const VARIANT& Get() const { return m_value; }
    VARIANT& Get() { return m_value; }
    /// For an [out] argument; clears what is held.
    [[nodiscard]] VARIANT* Put()
    {
        VariantClear(&m_value);
        // Whoever sets the type first must find no old value below it.
        m_value = {};
        return &m_value;
    }
    /// Gives the value to the caller, who must clear it.
    [[nodiscard]] VARIANT Detach() { return std::exchange(m_value, VARIANT{}); }
    /// Converts the value; unchanged when that fails. An object is asked for its value.
    HRESULT ChangeType(VARTYPE type) { return SetTo(m_value, type); }
    /// Takes over a value in another type; unchanged when that fails.
    HRESULT SetTo(const VARIANT& value, VARTYPE type, USHORT flags = 0)
    {
        return VariantChangeType(&m_value, const_cast<VARIANT*>(&value), flags, type);
    }
    /// The text that is held; empty for anything else.
    std::wstring_view Text() const { return ViewOf(Type() == VT_BSTR ? V_BSTR(&m_value) : nullptr); }
    /// The interface of the object that is held; empty when it has none, and for anything else.
    template <class Interface>
    ComPtr<Interface> As() const
    {
        return IsObject() ? ComPtr<IUnknown>(V_UNKNOWN(&m_value)).As<Interface>() : nullptr;
    }

private:
    VARIANT m_value{};
};

/// An optional argument that is left out.
inline VARIANT MissingArgument()
{
    VARIANT missing{};
    V_VT(&missing) = VT_ERROR;
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    return missing;
}

inline bool IsMissing(const VARIANT& argument)
{
    return V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
}

}  // namespace sylvex
