#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/types.h"

namespace sylvex {

/// The text of one value in an error report. What stands between braces, and every tag, is the report's own: markup and
/// braces of the value are escaped, characters that nobody sees are named. Texts read the same whatever the user's
/// regional settings are, and are bounded in length; what is left out is told.
class ValueText {
public:
    static constexpr std::size_t kLongestText = 4096;
    static constexpr std::size_t kLongestValue = 32768;
    static constexpr std::size_t kMostElements = 200;
    static constexpr std::size_t kMostBytes = 256;

    void Text(std::wstring_view text);
    /// Words of the report itself, such as {Nothing}, as they are.
    void Marker(std::wstring_view marker) { m_text += marker; }
    /// The same with something of the value behind the words: {Node Letters}.
    void Marker(std::wstring_view words, std::wstring_view detail);
    void Boolean(bool value) { m_text += value ? L"True" : L"False"; }
    void Amount(Currency value);
    /// As year-month-day hours:minutes:seconds; a number that is no date in days.
    void Moment(Date value);
    /// The shortest decimal that reads back as the same number.
    template <class Value>
    requires std::is_arithmetic_v<Value>
    void Number(Value value)
    {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        m_text.append(digits.data(), end);
    }
    /// In hexadecimal, the first ones of many.
    void Bytes(const unsigned char* bytes, std::size_t count);

    /// An element of an array or a collection, with its indices as they are written: "3,-1".
    void BeginElement(std::wstring_view indices);
    void EndElement() { m_text += L"</Element>"; }
    /// Whether no further element is to be added.
    bool IsFull() const { return m_text.size() >= kLongestValue; }

    const std::wstring& Get() const { return m_text; }

private:
    void Hexadecimal(std::uint32_t value, int digits);
    void Character(std::uint32_t code);
    std::wstring m_text;
};

/// What arrays and collections end with whose elements are not all shown.
std::wstring TruncatedAt(std::size_t count, std::wstring_view unit);

/// What stands for a value that failed with this number while it was rendered.
std::wstring FormattingError(long number);

}  // namespace sylvex
