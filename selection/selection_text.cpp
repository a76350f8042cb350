#include "selection/selection_text.h"

#include <array>
#include <cstdint>

#include "platform/path_names.h"
#include "platform/runtime_error.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr std::wstring_view kVersionLine = L"sylvex-selection 1";
constexpr std::wstring_view kLeaveNewLine = L"new-entries 0";
constexpr std::wstring_view kTakeNewLine = L"new-entries 1";

struct Mark {
    std::wstring_view text;
    bool include;
    PathRules::Reach reach;
};
constexpr Mark kMarks[] = {{L"+ ", true, PathRules::Reach::Branch},
                           {L"- ", false, PathRules::Reach::Branch},
                           {L"+. ", true, PathRules::Reach::Files},
                           {L"-. ", false, PathRules::Reach::Files}};

bool IsHighHalf(std::uint32_t code)
{
    return code >= 0xD800 && code < 0xDC00;
}

bool IsLowHalf(std::uint32_t code)
{
    return code >= 0xDC00 && code < 0xE000;
}

/// Whether a line, or the encoding of the text, may lose the character at `at`.
bool MayBeLost(std::wstring_view path, std::size_t at)
{
    const auto code = static_cast<std::uint32_t>(path[at]);
    const auto next = at + 1 < path.size() ? static_cast<std::uint32_t>(path[at + 1]) : 0;
    const auto before = at > 0 ? static_cast<std::uint32_t>(path[at - 1]) : 0;
    if (IsHighHalf(code)) return !IsLowHalf(next);
    if (IsLowHalf(code)) return !IsHighHalf(before);
    const bool atAnEnd = at == 0 || at + 1 == path.size();
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == L'%' || (code == L' ' && atAnEnd) ||
           code == 0x2028 || code == 0x2029 || code == 0xFEFF;
}

void AppendEscaped(std::wstring_view path, std::wstring& text)
{
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (!MayBeLost(path, at)) {
            text += path[at];
            continue;
        }
        text += L"%{";
        for (int shift = 12; shift >= 0; shift -= 4)
            text += kDigits[static_cast<std::uint32_t>(path[at]) >> shift & 0xF];
        text += L'}';
    }
}

int DigitOf(wchar_t character)
{
    if (character >= L'0' && character <= L'9') return character - L'0';
    if (character >= L'A' && character <= L'F') return character - L'A' + 10;
    return -1;
}

/// Nothing when an escape is none.
std::optional<std::wstring> Unescaped(std::wstring_view text)
{
    constexpr std::size_t kLength = 7;  // of %{XXXX}
    std::wstring path;
    while (!text.empty()) {
        if (text.front() != L'%') {
            path += text.front();
            text.remove_prefix(1);
            continue;
        }
        if (!text.starts_with(L"%{") || text.size() < kLength || text[kLength - 1] != L'}') return std::nullopt;
        std::uint32_t code = 0;
        for (const wchar_t digit : text.substr(2, 4)) {
            if (DigitOf(digit) < 0) return std::nullopt;
            code = code << 4 | static_cast<std::uint32_t>(DigitOf(digit));
        }
        path += static_cast<wchar_t>(code);
        text.remove_prefix(kLength);
    }
    return path;
}

std::optional<PathRules::Rule> ReadRule(std::wstring_view line)
{
    for (const Mark& mark : kMarks) {
        if (!line.starts_with(mark.text)) continue;
        const auto path = Unescaped(line.substr(mark.text.size()));
        const bool isOnDisk = path && path->find(L'\0') == std::wstring::npos && !NamesOf(*path).empty() &&
                              (path->starts_with(L"\\\\") || path->find(L":\\") == 1);
        if (!isOnDisk) return std::nullopt;
        return PathRules::Rule{WithoutSeparator(*path), mark.include, mark.reach};
    }
    return std::nullopt;
}

}  // namespace

std::wstring WriteSelection(const KeptSelection& selection)
{
    std::wstring text(kVersionLine);
    text += L'\n';
    text += selection.takesNew ? kTakeNewLine : kLeaveNewLine;
    text += L'\n';
    for (const PathRules::Rule& rule : selection.rules.Rules()) {
        for (const Mark& mark : kMarks)
            if (mark.include == rule.include && mark.reach == rule.reach) text += mark.text;
        AppendEscaped(rule.path, text);
        text += L'\n';
    }
    return text;
}

KeptSelection ReadSelection(Regional& regional, std::wstring_view text)
{
    KeptSelection selection{PathRules(regional)};
    std::size_t number = 0;
    while (!text.empty() || number < 2) {
        ++number;
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        const auto wrong = [&] {
            return RuntimeError{321, L"Invalid file format: line " + std::to_wstring(number) + L" of the selection"};
        };
        if (number == 1) {
            if (line != kVersionLine) throw wrong();
        } else if (number == 2) {
            selection.takesNew = line == kTakeNewLine;
            if (!selection.takesNew && line != kLeaveNewLine) throw wrong();
        } else if (!line.empty()) {
            const auto rule = ReadRule(line);
            if (!rule) throw wrong();
            selection.rules.Add(*rule);
        }
    }
    return selection;
}

}  // namespace sylvex
