#include "selection/ignore_patterns.h"

#include <algorithm>
#include <array>

#include "platform/star_match.h"
#include "platform/text.h"

namespace sylvex {

namespace {

/// Without blanks at the end, but for one behind a backslash.
std::wstring_view WithoutBlanks(std::wstring_view line)
{
    while (line.ends_with(L' ') && !line.ends_with(L"\\ "))
        line.remove_suffix(1);
    return line;
}

struct NamedSet {
    std::wstring_view name;
    std::array<std::pair<wchar_t, wchar_t>, 4> ranges;
};

/// Letters are compared in lower case.
constexpr std::pair<wchar_t, wchar_t> kNoRange{1, 0};
constexpr NamedSet kNamedSets[] = {
    {L"alpha", {{{L'a', L'z'}, kNoRange, kNoRange, kNoRange}}},
    {L"lower", {{{L'a', L'z'}, kNoRange, kNoRange, kNoRange}}},
    {L"upper", {{{L'a', L'z'}, kNoRange, kNoRange, kNoRange}}},
    {L"digit", {{{L'0', L'9'}, kNoRange, kNoRange, kNoRange}}},
    {L"alnum", {{{L'a', L'z'}, {L'0', L'9'}, kNoRange, kNoRange}}},
    {L"xdigit", {{{L'a', L'f'}, {L'0', L'9'}, kNoRange, kNoRange}}},
    {L"blank", {{{L' ', L' '}, {L'\t', L'\t'}, kNoRange, kNoRange}}},
    {L"space", {{{L' ', L' '}, {L'\t', L'\r'}, kNoRange, kNoRange}}},
    {L"punct", {{{L'!', L'/'}, {L':', L'@'}, {L'[', L'`'}, {L'{', L'~'}}}},
};

const NamedSet* FindNamedSet(std::wstring_view name)
{
    const auto found = std::find_if(std::begin(kNamedSets), std::end(kNamedSets),
                                    [&](const NamedSet& set) { return set.name == name; });
    return found != std::end(kNamedSets) ? found : nullptr;
}

}  // namespace

IgnorePatterns::IgnorePatterns(Regional& regional, std::wstring_view text) : m_regional(&regional)
{
    constexpr wchar_t kByteOrderMark = 0xFEFF;
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(1);
    for (std::wstring_view line : SplitText(text, L'\n')) {
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        if (auto pattern = Parse(regional, WithoutBlanks(line))) m_patterns.push_back(std::move(*pattern));
    }
}

/// Nothing for a comment, and for what can never fit.
std::optional<IgnorePatterns::Pattern> IgnorePatterns::Parse(Regional& regional, std::wstring_view line)
{
    Pattern pattern;
    pattern.written = line;
    if (line.empty() || line.front() == L'#') return std::nullopt;
    if (line.front() == L'!') {
        pattern.takesBack = true;
        line.remove_prefix(1);
    }
    if (line.ends_with(L'/')) {
        pattern.foldersOnly = true;
        line.remove_suffix(1);
    }
    pattern.bound = line.find(L'/') != std::wstring_view::npos;
    if (line.starts_with(L'/')) line.remove_prefix(1);
    if (line.empty()) return std::nullopt;
    const std::wstring lower = LowerText(regional, line);
    Glob part;
    std::size_t stars = 0;
    const auto endPart = [&] {
        const bool anyFolders = stars > 1 && part.size() == stars;
        pattern.parts.push_back(anyFolders && pattern.bound ? std::nullopt : std::optional(part));
        part.clear();
        stars = 0;
    };
    for (std::size_t at = 0; at < lower.size(); ++at) {
        Token token{Token::Kind::Letter, lower[at], false, {}};
        switch (lower[at]) {
            case L'/':
                endPart();
                continue;
            case L'*':
                token.kind = Token::Kind::AnyLetters;
                ++stars;
                break;
            case L'?':
                token.kind = Token::Kind::AnyLetter;
                break;
            case L'[':
                at = ParseSet(lower, at, token);
                break;
            case L'\\':
                ++at;
                break;
            default:
                break;
        }
        if (at >= lower.size()) return std::nullopt;
        if (token.kind == Token::Kind::Letter) token.letter = lower[at];
        part.push_back(std::move(token));
    }
    endPart();
    return pattern;
}

/// Reads the set whose bracket stands at `at`; gives the place of its last bracket, the text's end when it has none.
std::size_t IgnorePatterns::ParseSet(std::wstring_view text, std::size_t at, Token& set)
{
    set.kind = Token::Kind::Set;
    ++at;
    if (at < text.size() && (text[at] == L'!' || text[at] == L'^')) {
        set.negated = true;
        ++at;
    }
    for (bool isFirst = true; at < text.size() && (isFirst || text[at] != L']'); isFirst = false, ++at) {
        if (text.substr(at).starts_with(L"[:")) {
            const std::size_t end = text.find(L":]", at + 2);
            const NamedSet* named =
                end != std::wstring_view::npos ? FindNamedSet(text.substr(at + 2, end - at - 2)) : nullptr;
            if (named != nullptr) {
                set.ranges.insert(set.ranges.end(), named->ranges.begin(), named->ranges.end());
                at = end + 1;
                continue;
            }
        }
        if (text[at] == L'\\' && at + 1 < text.size()) ++at;
        wchar_t last = text[at];
        const wchar_t first = last;
        if (at + 2 < text.size() && text[at + 1] == L'-' && text[at + 2] != L']') {
            at += 2;
            if (text[at] == L'\\' && at + 1 < text.size()) ++at;
            last = text[at];
        }
        set.ranges.emplace_back(first, last);
    }
    return at;
}

bool IgnorePatterns::Fits(const Token& token, wchar_t letter)
{
    switch (token.kind) {
        case Token::Kind::Letter:
            return letter == token.letter;
        case Token::Kind::Set:
            return token.negated != std::any_of(token.ranges.begin(), token.ranges.end(), [&](const auto& range) {
                       return range.first <= letter && letter <= range.second;
                   });
        default:
            return true;
    }
}

bool IgnorePatterns::Fits(const Glob& glob, std::wstring_view name)
{
    const auto isStar = [&](std::size_t token) { return glob[token].kind == Token::Kind::AnyLetters; };
    const auto used = MatchStars(glob.size(), name.size(), isStar,
                                 [&](std::size_t token, std::size_t at) { return Fits(glob[token], name[at]); });
    std::size_t token = used.value_or(0);
    while (used && token < glob.size() && isStar(token))
        ++token;
    return used && token == glob.size();
}

/// Whether the pattern fits the path of the first `count` names. At a pattern's end "**" takes one name at least.
bool IgnorePatterns::Fits(const Pattern& pattern, const std::vector<std::wstring>& lower, std::size_t count,
                          bool isFolder)
{
    if (pattern.foldersOnly && !isFolder) return false;
    if (!pattern.bound) return Fits(*pattern.parts.front(), lower[count - 1]);
    const auto used = MatchStars(
        pattern.parts.size(), count, [&](std::size_t part) { return !pattern.parts[part]; },
        [&](std::size_t part, std::size_t at) { return Fits(*pattern.parts[part], lower[at]); });
    return used == pattern.parts.size();
}

/// What the last pattern that fits says of the path of the first `count` names.
const std::wstring* IgnorePatterns::Settle(const std::vector<std::wstring>& lower, std::size_t count,
                                           bool isFolder) const
{
    for (auto pattern = m_patterns.rbegin(); pattern != m_patterns.rend(); ++pattern)
        if (Fits(*pattern, lower, count, isFolder)) return pattern->takesBack ? nullptr : &pattern->written;
    return nullptr;
}

std::vector<std::wstring> IgnorePatterns::Lower(const Parts& parts) const
{
    std::vector<std::wstring> lower;
    lower.reserve(parts.size());
    for (const std::wstring_view part : parts)
        lower.push_back(LowerText(*m_regional, part));
    return lower;
}

const std::wstring* IgnorePatterns::ExcludedBy(const Parts& parts, bool isFolder) const
{
    if (Empty()) return nullptr;
    const std::vector<std::wstring> lower = Lower(parts);
    for (std::size_t count = 1; count <= lower.size(); ++count)
        if (const auto* pattern = Settle(lower, count, isFolder || count < lower.size())) return pattern;
    return nullptr;
}

const std::wstring* IgnorePatterns::ExcludedHere(const Parts& parts, bool isFolder) const
{
    if (Empty() || parts.empty()) return nullptr;
    return Settle(Lower(parts), parts.size(), isFolder);
}

}  // namespace sylvex
