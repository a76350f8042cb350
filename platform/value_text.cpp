#include "platform/value_text.h"

#include <chrono>
#include <cmath>
#include <cwchar>

namespace sylvex {

namespace {

constexpr bool IsHighSurrogate(std::uint32_t code)
{
    return code >= 0xD800 && code < 0xDC00;
}

constexpr bool IsLowSurrogate(std::uint32_t code)
{
    return code >= 0xDC00 && code < 0xE000;
}

/// Control characters, those that only steer how others are shown, and what is no character at all.
constexpr bool IsInvisible(std::uint32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0xAD || (code >= 0x200B && code < 0x2010) ||
           (code >= 0x2028 && code < 0x202F) || (code >= 0x2060 && code < 0x2070) || code == 0xFEFF ||
           (code >= 0xFFF9 && code < 0xFFFC) || (code >= 0xFDD0 && code < 0xFDF0) || (code & 0xFFFE) == 0xFFFE;
}

std::uint32_t CodeOf(wchar_t character)
{
    return static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(character));
}

}  // namespace

void ValueText::Hexadecimal(std::uint32_t value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        m_text += L"0123456789ABCDEF"[value >> shift & 0xF];
}

void ValueText::Character(std::uint32_t code)
{
    switch (code) {
        case L'&':
            m_text += L"&amp;";
            return;
        case L'<':
            m_text += L"&lt;";
            return;
        case L'>':
            m_text += L"&gt;";
            return;
        case L'{':
            m_text += L"&#123;";
            return;
        case L'}':
            m_text += L"&#125;";
            return;
        default:
            break;
    }
    if (!IsInvisible(code) && !IsHighSurrogate(code) && !IsLowSurrogate(code)) {
        m_text += static_cast<wchar_t>(code);
        return;
    }
    m_text += L"{U+";
    Hexadecimal(code, code > 0xFFFF ? 6 : 4);
    m_text += L'}';
}

void ValueText::Text(std::wstring_view text)
{
    std::size_t at = 0;
    while (at < text.size() && at < kLongestText) {
        const std::uint32_t code = CodeOf(text[at]);
        const bool isPair = IsHighSurrogate(code) && at + 1 < text.size() && IsLowSurrogate(CodeOf(text[at + 1]));
        if (isPair) {
            m_text += text.substr(at, 2);
        } else {
            Character(code);
        }
        at += isPair ? 2 : 1;
    }
    if (at < text.size()) m_text += TruncatedAt(at, L"characters");
}

void ValueText::Marker(std::wstring_view words, std::wstring_view detail)
{
    m_text += L'{';
    m_text += words;
    m_text += L' ';
    Text(detail);
    m_text += L'}';
}

void ValueText::Amount(Currency value)
{
    constexpr std::uint64_t kUnit = 10000;
    const auto units = static_cast<std::uint64_t>(value.units);
    const std::uint64_t size = value.units < 0 ? 0 - units : units;
    if (value.units < 0) m_text += L'-';
    Number(size / kUnit);
    if (size % kUnit == 0) return;
    const std::wstring decimals = std::to_wstring(kUnit + size % kUnit).substr(1);
    m_text += L'.';
    m_text += decimals.substr(0, decimals.find_last_not_of(L'0') + 1);
}

void ValueText::Moment(Date value)
{
    using namespace std::chrono;
    // The years 100 to 9999.
    if (!(value.days > -657435.0 && value.days < 2958466.0)) {
        Number(value.days);
        return;
    }
    // The time of day counts forward, also before the first day.
    const double day = std::trunc(value.days);
    const hh_mm_ss time(seconds(std::llround(std::fabs(value.days - day) * 86400)));
    const sys_days first = year(1899) / 12 / 30;
    const bool isNextDay = time.hours() == hours(24);
    const year_month_day date(first + days(static_cast<int>(day) + (isNextDay ? 1 : 0)));
    wchar_t text[32];
    const int length =
        std::swprintf(text, std::size(text), L"%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                      isNextDay ? 0 : static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                      static_cast<int>(time.seconds().count()));
    m_text.append(text, static_cast<std::size_t>(length));
}

void ValueText::Bytes(const unsigned char* bytes, std::size_t count)
{
    for (std::size_t i = 0; i < count && i < kMostBytes; ++i) {
        if (i > 0) m_text += L' ';
        Hexadecimal(bytes[i], 2);
    }
    if (count > kMostBytes) m_text += TruncatedAt(kMostBytes, L"bytes");
}

void ValueText::BeginElement(std::wstring_view indices)
{
    m_text += L"<Element Index=\"";
    m_text += indices;
    m_text += L"\">";
}

std::wstring TruncatedAt(std::size_t count, std::wstring_view unit)
{
    return L"{Dump truncated at " + std::to_wstring(count) + L" " + std::wstring(unit) + L"}";
}

std::wstring FormattingError(long number)
{
    return L"{Error " + std::to_wstring(number) + L" formatting for output}";
}

}  // namespace sylvex
