#include "host/csv.h"

namespace sylvex::host {
namespace {

/// Whether a spreadsheet would take the cell for a formula, quoted or not.
bool IsFormula(const std::wstring& cell)
{
    constexpr std::wstring_view kStarts = L"=+-@\uFF1D\uFF0B\uFF0D\uFF20";
    return !cell.empty() && (cell[0] < L' ' || kStarts.find(cell[0]) != kStarts.npos);
}

void AppendCell(std::wstring& text, const std::wstring& plain)
{
    const std::wstring cell = IsFormula(plain) ? L'\'' + plain : plain;
    if (cell.find_first_of(L",\"\r\n") == std::wstring::npos) {
        text += cell;
        return;
    }
    text += L'"';
    for (const wchar_t character : cell) {
        if (character == L'"') text += L'"';
        text += character;
    }
    text += L'"';
}

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Takes the code point that starts at `index` and moves the index behind it.
char32_t TakeCodePoint(std::wstring_view text, size_t& index)
{
    constexpr char32_t kReplacement = 0xFFFD;
    constexpr char32_t kLastCodePoint = 0x10FFFF;
    const char32_t unit = static_cast<char32_t>(text[index++]);
    if (IsHighSurrogate(unit) && index < text.size()) {
        const char32_t next = static_cast<char32_t>(text[index]);
        if (IsLowSurrogate(next)) {
            ++index;
            return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
        }
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit > kLastCodePoint ? kReplacement : unit;
}

void AppendUtf8(std::string& bytes, char32_t point)
{
    const auto append = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
    const auto continuation = [&](int shift) { append(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        continuation(0);
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        continuation(6);
        continuation(0);
    } else {
        append(0xF0 | (point >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

}  // namespace

std::wstring CsvText(const Table& table)
{
    std::wstring text;
    for (const auto& row : table) {
        for (size_t column = 0; column < row.size(); ++column) {
            if (column > 0) text += L',';
            AppendCell(text, row[column]);
        }
        text += L"\r\n";
    }
    return text;
}

std::string ToUtf8(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (size_t index = 0; index < text.size();)
        AppendUtf8(bytes, TakeCodePoint(text, index));
    return bytes;
}

}  // namespace sylvex::host
