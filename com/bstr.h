#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace sylvex {

/// The text of a BSTR that somebody else owns, which may be null.
inline std::wstring_view ViewOf(const OLECHAR* text)
{
    return {text ? text : L"", SysStringLen(const_cast<BSTR>(text))};
}

/// Owns a BSTR. A null BSTR is the empty text.
class Bstr {
public:
    Bstr() = default;
    /// Copies the text; throws std::bad_alloc.
    explicit Bstr(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
        if (!m_text) throw std::bad_alloc();
    }
    Bstr(Bstr&& other) noexcept : m_text(other.Detach()) {}
    Bstr& operator=(Bstr other) noexcept
    {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    BSTR Get() const { return m_text; }
    /// For an [out] argument; frees what is held.
    [[nodiscard]] BSTR* Put()
    {
        SysFreeString(Detach());
        return &m_text;
    }
    /// Gives the text to the caller, who must free it.
    [[nodiscard]] BSTR Detach() { return std::exchange(m_text, nullptr); }
    std::wstring_view View() const { return ViewOf(m_text); }
    std::wstring Text() const { return std::wstring(View()); }

private:
    BSTR m_text = nullptr;
};

}  // namespace sylvex
