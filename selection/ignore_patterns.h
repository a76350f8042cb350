#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/regional.h"

namespace sylvex {

/// Patterns in the syntax of ignore files: one a line; "#" begins a comment, "!" takes back what earlier patterns say,
/// "/" at the beginning or within binds a pattern to the root, "/" at the end is for folders only, "*", "?" and "[...]"
/// stay within one name, "**" as a whole part stands for any number of folders. The last pattern that fits settles it,
/// and nothing inside an excluded folder is taken back. Letter case does not matter, as in file names.
class IgnorePatterns {
public:
    /// Parts of a path below the root, outermost first.
    using Parts = std::vector<std::wstring_view>;

    /// None.
    IgnorePatterns() = default;
    IgnorePatterns(Regional& regional, std::wstring_view text);

    bool Empty() const { return m_patterns.empty(); }
    /// The pattern, as written, that excludes the entry or a folder above it; null when none does. What the last of the
    /// parts names is a folder when `isFolder`.
    const std::wstring* ExcludedBy(const Parts& parts, bool isFolder) const;
    /// The same for an entry none of whose folders is excluded: what settles one name below its folders. Costs nothing
    /// for the folders above.
    const std::wstring* ExcludedHere(const Parts& parts, bool isFolder) const;

private:
    /// What one part of a pattern is made of.
    struct Token {
        enum class Kind { Letter, AnyLetter, AnyLetters, Set } kind;
        wchar_t letter = 0;
        bool negated = false;
        /// Of a set: pairs of bounds.
        std::vector<std::pair<wchar_t, wchar_t>> ranges;
    };
    using Glob = std::vector<Token>;
    struct Pattern {
        std::wstring written;
        bool takesBack = false;
        bool foldersOnly = false;
        bool bound = false;  ///< to the root; otherwise to the last name alone
        /// One for each part; empty for "**".
        std::vector<std::optional<Glob>> parts;
    };

    static std::optional<Pattern> Parse(Regional& regional, std::wstring_view line);
    static std::size_t ParseSet(std::wstring_view text, std::size_t at, Token& set);
    static bool Fits(const Glob& glob, std::wstring_view name);
    static bool Fits(const Token& token, wchar_t letter);
    static bool Fits(const Pattern& pattern, const std::vector<std::wstring>& lower, std::size_t count, bool isFolder);
    const std::wstring* Settle(const std::vector<std::wstring>& lower, std::size_t count, bool isFolder) const;
    std::vector<std::wstring> Lower(const Parts& parts) const;

    Regional* m_regional = nullptr;
    std::vector<Pattern> m_patterns;
};

}  // namespace sylvex
