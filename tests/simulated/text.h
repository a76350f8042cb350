#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace sylvex {

/// The character's number, not negative whatever the sign of wchar_t.
inline std::uint32_t CodeOf(wchar_t character)
{
    return static_cast<std::make_unsigned_t<wchar_t>>(character);
}

/// Lower case by a fixed table (Latin, Greek, Cyrillic), whatever the locale of the machine.
wchar_t FoldCase(wchar_t character);
std::wstring Folded(std::wstring_view text);
/// Comparison without regard to letter case: below 0, 0 or above 0.
int CompareFolded(std::wstring_view left, std::wstring_view right);
/// What comes after the last dot, folded; empty when there is none.
std::wstring FoldedExtension(std::wstring_view name);

/// The text as UTF-8, the form in which the simulated desktop hands records to tests.
std::string Utf8(std::wstring_view text);
/// The same on one line: control characters show as \r, \n, \t or \?.
std::string OneLine(std::wstring_view text);

}  // namespace sylvex
