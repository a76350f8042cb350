#include "tests/simulated/wildcards.h"

#include "tests/simulated/text.h"

namespace sylvex {

namespace {

// The marks that the platform puts in place of wildcards; none of them can stand in a name.
constexpr wchar_t kAny = L'*';            // any run of characters
constexpr wchar_t kAnyButLastDot = L'<';  // any run that leaves the last dot
constexpr wchar_t kOneOrEnd = L'>';       // one character, or nothing at a dot or the end
constexpr wchar_t kDotOrEnd = L'"';       // a dot, or nothing at the end

}  // namespace

Wildcards::Wildcards(std::wstring_view pattern) : m_steps(pattern == L"*.*" ? L"*" : Folded(pattern))
{
    const bool dotless = m_steps.ends_with(L"*.");
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        const wchar_t next = i + 1 < m_steps.size() ? m_steps[i + 1] : L'\0';
        if (m_steps[i] == L'?') m_steps[i] = kOneOrEnd;
        if (m_steps[i] == L'*' && next == L'.') m_steps[i] = kAnyButLastDot;
        if (m_steps[i] == L'.' && (next == L'*' || next == L'?')) m_steps[i] = kDotOrEnd;
    }
    // "*." is every name without an extension: nothing is left to follow the run.
    if (dotless) m_steps.pop_back();
}

bool Wildcards::Matches(std::wstring_view name) const
{
    return m_steps == L"*" || MatchFrom(0, name, 0);
}

bool Wildcards::MatchFrom(std::size_t step, std::wstring_view name, std::size_t at) const
{
    for (; step < m_steps.size(); ++step) {
        const bool end = at == name.size();
        const wchar_t mark = m_steps[step];
        if (mark == kAny || mark == kAnyButLastDot) {
            const std::size_t last = mark == kAny ? name.npos : name.rfind(L'.');
            for (std::size_t to = at;; ++to) {
                if (MatchFrom(step + 1, name, to)) return true;
                if (to == name.size() || to == last) return false;
            }
        }
        if (mark == kDotOrEnd && end) continue;
        if (mark == kOneOrEnd && (end || name[at] == L'.')) continue;
        if (end) return false;
        if (mark != kOneOrEnd && FoldCase(name[at]) != (mark == kDotOrEnd ? L'.' : mark)) return false;
        ++at;
    }
    return at == name.size();
}

}  // namespace sylvex
