#include "tests/simulated/text.h"

#include <algorithm>

namespace sylvex {

wchar_t FoldCase(wchar_t character)
{
    const auto code = CodeOf(character);
    const auto plus = [character](int distance) { return static_cast<wchar_t>(character + distance); };
    if (code < 0x80) return code >= 'A' && code <= 'Z' ? plus(32) : character;
    if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return plus(32);
    const bool evenUpper = (code >= 0x100 && code <= 0x137 && code != 0x130) || (code >= 0x14A && code <= 0x177);
    const bool oddUpper = (code >= 0x139 && code <= 0x148) || (code >= 0x179 && code <= 0x17E);
    if ((evenUpper && code % 2 == 0) || (oddUpper && code % 2 == 1)) return plus(1);
    if (code >= 0x391 && code <= 0x3A9) return plus(32);
    if (code >= 0x410 && code <= 0x42F) return plus(32);
    if (code >= 0x400 && code <= 0x40F) return plus(80);
    return character;
}

std::wstring Folded(std::wstring_view text)
{
    std::wstring folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldCase);
    return folded;
}

int CompareFolded(std::wstring_view left, std::wstring_view right)
{
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const wchar_t a = FoldCase(left[i]);
        const wchar_t b = FoldCase(right[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

std::wstring FoldedExtension(std::wstring_view name)
{
    const std::size_t dot = name.rfind(L'.');
    return dot == name.npos ? std::wstring() : Folded(name.substr(dot + 1));
}

namespace {

void AppendUtf8(std::string& out, std::uint32_t code)
{
    const auto put = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (code < 0x80) return put(code);
    if (code < 0x800) {
        put(0xC0 | code >> 6);
        return put(0x80 | (code & 0x3F));
    }
    if (code < 0x10000) {
        put(0xE0 | code >> 12);
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
    }
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
}

}  // namespace

std::string Utf8(std::wstring_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t code = CodeOf(text[i]);
        const bool lead = code >= 0xD800 && code < 0xDC00;
        const auto trail = lead && i + 1 < text.size() ? CodeOf(text[i + 1]) : 0U;
        if (trail >= 0xDC00 && trail < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (trail - 0xDC00);
            ++i;
        }
        AppendUtf8(out, code);
    }
    return out;
}

std::string OneLine(std::wstring_view text)
{
    std::string out;
    for (const char byte : Utf8(text)) {
        if (static_cast<unsigned char>(byte) >= 32) {
            out += byte;
        } else {
            out += byte == '\r' ? "\\r" : byte == '\n' ? "\\n" : byte == '\t' ? "\\t" : "\\?";
        }
    }
    return out;
}

}  // namespace sylvex
