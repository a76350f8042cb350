#pragma once

#include <windows.h>

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace sylvex {

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
    /// The same for calls that take an interface by its identifier.
    [[nodiscard]] void** PutAny() { return reinterpret_cast<void**>(Put()); }
    /// The object's interface `Other`, or empty when it has none.
    template <class Other>
    ComPtr<Other> As() const
    {
        ComPtr<Other> other;
        if (m_object) m_object->QueryInterface(__uuidof(Other), other.PutAny());
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

}  // namespace sylvex
