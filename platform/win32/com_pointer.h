#pragma once

#include <windows.h>

#include <utility>

namespace sylvex {

/// Owns one reference to an interface.
template <typename Interface>
class ComPointer {
public:
    ComPointer() = default;
    /// Adds a reference of its own.
    explicit ComPointer(Interface* shared) noexcept : m_pointer(shared)
    {
        if (m_pointer) m_pointer->AddRef();
    }
    ComPointer(const ComPointer& other) noexcept : ComPointer(other.m_pointer) {}
    ComPointer(ComPointer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    ComPointer& operator=(ComPointer other) noexcept
    {
        std::swap(m_pointer, other.m_pointer);
        return *this;
    }
    ~ComPointer()
    {
        if (m_pointer) m_pointer->Release();
    }

    Interface* Get() const noexcept { return m_pointer; }
    Interface* operator->() const noexcept { return m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }
    /// Where a call that hands out a reference stores it; what was held is released first.
    Interface** Receive() noexcept
    {
        *this = ComPointer();
        return &m_pointer;
    }
    /// The same, as calls by interface identifier take it.
    void** ReceiveAny() noexcept { return reinterpret_cast<void**>(Receive()); }
    /// Another interface of the same object, null when it has none.
    template <typename Other>
    ComPointer<Other> As(const IID& identifier) const noexcept
    {
        ComPointer<Other> other;
        if (m_pointer) m_pointer->QueryInterface(identifier, other.ReceiveAny());
        return other;
    }

private:
    Interface* m_pointer = nullptr;
};

}  // namespace sylvex
