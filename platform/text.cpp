#include "platform/text.h"

#include <algorithm>

namespace sylvex {

namespace {

bool IsAscii(std::wstring_view text)
{
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c > 0 && c < 128; });
}

wchar_t AsciiLower(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}

bool EqualAscii(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace

bool EqualText(Regional& regional, std::wstring_view left, std::wstring_view right)
{
    if (!IsAscii(left) || !IsAscii(right)) return regional.Compare(left, right) == 0;
    return EqualAscii(left, right);
}

bool EqualName(Regional& regional, std::wstring_view left, std::wstring_view right)
{
    if (left.size() != right.size()) return false;
    if (IsAscii(left) && IsAscii(right)) return EqualAscii(left, right);
    return regional.Lower(left) == regional.Lower(right);
}

std::wstring LowerText(Regional& regional, std::wstring_view text)
{
    if (!IsAscii(text)) return regional.Lower(text);
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

std::vector<std::wstring> SplitText(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring> parts;
    if (text.empty()) return parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

bool LosesAnEnding(std::wstring_view path)
{
    for (std::size_t i = 1; i < path.size(); ++i) {
        const bool ends = i + 1 == path.size() || path[i + 1] == L'\\';
        const bool onlyDots = path[i - 1] == L'\\' || path[i - 1] == L'.';
        if (ends && (path[i] == L' ' || (path[i] == L'.' && !onlyDots))) return true;
    }
    return false;
}

}  // namespace sylvex
