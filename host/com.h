#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

namespace sylvex::host {

/// A counted reference to a COM object; empty when it refers to nothing.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    /// Adds a reference of its own.
    explicit ComPtr(Interface* object) : m_object(object)
    {
        if (m_object) m_object->AddRef();
    }
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
    void Reset()
    {
        if (Interface* const object = std::exchange(m_object, nullptr)) object->Release();
    }
    /// For an [out] argument; drops what is held.
    [[nodiscard]] Interface** Put()
    {
        Reset();
        return &m_object;
    }
    /// For an [in, out] argument.
    [[nodiscard]] Interface** Address() { return &m_object; }
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

private:
    Interface* m_object = nullptr;
};

/// Owns a BSTR. A null BSTR is the empty text.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(m_text); }

    BSTR Get() const { return m_text; }
    /// For an [out] argument, once.
    [[nodiscard]] BSTR* Put() { return &m_text; }
    std::wstring Text() const { return m_text ? std::wstring(m_text, SysStringLen(m_text)) : std::wstring(); }

private:
    BSTR m_text = nullptr;
};

/// Owns a VARIANT.
class Variant {
public:
    Variant() { VariantInit(&m_value); }
    explicit Variant(std::wstring_view text) : Variant()
    {
        V_VT(&m_value) = VT_BSTR;
        V_BSTR(&m_value) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    explicit Variant(HWND window) : Variant()
    {
        // Handles of windows have 32 bits everywhere, and scripts know no longer numbers.
        V_VT(&m_value) = VT_I4;
        V_I4(&m_value) = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window));
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&m_value); }

    const VARIANT& Get() const { return m_value; }
    VARIANT& Get() { return m_value; }
    /// For an [out] argument, once.
    [[nodiscard]] VARIANT* Put() { return &m_value; }
    /// The interface of the object that is held, or empty.
    template <class Interface>
    ComPtr<Interface> As() const
    {
        const bool isObject = V_VT(&m_value) == VT_DISPATCH || V_VT(&m_value) == VT_UNKNOWN;
        return isObject ? ComPtr<IUnknown>(V_UNKNOWN(&m_value)).As<Interface>() : ComPtr<Interface>();
    }

private:
    VARIANT m_value;
};

/// Makes a class that implements these interfaces a COM object; its count starts at 1, and New() is how it is made.
/// The class answers QueryInterface through Answer(). Used on one thread.
template <class... Interfaces>
class ComObject : public Interfaces... {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }

protected:
    virtual ~ComObject() = default;

    /// Finds `id` among the interfaces listed, of which the first is the object's identity.
    template <class Identity, class... Others, class Class>
    static HRESULT Answer(Class* object, REFIID id, void** found)
    {
        if (!found) return E_POINTER;
        *found = id == IID_IUnknown ? static_cast<Identity*>(object) : nullptr;
        Offer<Identity>(object, id, found);
        (Offer<Others>(object, id, found), ...);
        if (!*found) return E_NOINTERFACE;
        object->AddRef();
        return S_OK;
    }

private:
    template <class Interface, class Class>
    static void Offer(Class* object, REFIID id, void** found)
    {
        if (id == __uuidof(Interface)) *found = static_cast<Interface*>(object);
    }

    ULONG m_references = 1;
};

/// A new object of a class derived from ComObject.
template <class Class, class... Arguments>
ComPtr<Class> New(Arguments&&... arguments)
{
    return ComPtr<Class>::Adopt(new Class(std::forward<Arguments>(arguments)...));
}

}  // namespace sylvex::host
