#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/regional.h"

namespace sylvex {

/// Which files of the disks are taken, whether they exist or not. The rule nearest above a file settles it, and where
/// there is none the file is left out. Letter case does not matter, as in file names.
class PathRules {
public:
    /// What a rule speaks of: its path with all below it, or the files right in the folder, but for those that a rule
    /// of their own names.
    enum class Reach { Branch, Files };
    struct Rule {
        /// Whole, without a separator at its end but for a drive's root.
        std::wstring path;
        bool include = true;
        Reach reach = Reach::Branch;
        bool operator==(const Rule&) const = default;
    };
    /// One name: the place of what is said of it. The first is that of the whole disks, whose names are drives ("C:")
    /// and servers ("\\server").
    using Name = std::uint32_t;
    static constexpr Name kDisks = 0;
    /// What is taken of a name that no rule below it speaks of, when it is a folder and when it is a file.
    struct Taken {
        bool folders = false;
        bool files = false;
        bool operator==(const Taken&) const = default;
    };

    explicit PathRules(Regional& regional) : m_regional(&regional) {}

    /// Takes the place of an earlier rule of that path and reach.
    void Add(const Rule& rule);
    /// Takes what the others take, too.
    void Unite(const PathRules& others);
    /// Takes away what follows from the rules above it.
    void Minimise();
    bool Empty() const { return m_below.empty(); }
    /// Whether the file is taken, or, with a separator behind the path, what is new in the folder.
    bool Includes(std::wstring_view path) const;
    /// From the outermost in; names in the order of their lower case.
    std::vector<Rule> Rules() const;

    /// The name right below another one, nothing when no rule speaks of it.
    std::optional<Name> Below(Name above, std::wstring_view name) const;
    /// What is taken inside, where `around` is what is taken around the name.
    Taken Inside(Name name, Taken around) const;
    /// What the name's own rule says, nothing without one.
    std::optional<bool> Branch(Name name) const { return m_entries[name].branch; }
    /// True when a rule takes the name or the files right in it.
    bool Takes(Name name) const
    {
        return m_entries[name].branch.value_or(false) || m_entries[name].files.value_or(false);
    }
    /// True for what must be a folder, since more is said of what is in it.
    bool IsFolder(Name name) const;
    /// As spelt where it was first met.
    const std::wstring& Spelt(Name name) const { return m_entries[name].name; }
    /// As a rule has it.
    std::wstring PathOf(Name name) const;
    /// Goes through all names below `top`: `enter` gives whether to go on below, `leave` follows what is below.
    template <class Enter, class Leave>
    void Walk(Name top, Enter&& enter, Leave&& leave) const
    {
        std::vector<std::pair<Name, Children>> open{{top, ChildrenOf(top)}};
        while (!open.empty()) {
            auto& [name, children] = open.back();
            if (children.first == children.second) {
                if (name != top) leave(name);
                open.pop_back();
                continue;
            }
            const Name child = (children.first++)->second;
            if (enter(child)) {
                open.emplace_back(child, ChildrenOf(child));
            } else {
                leave(child);
            }
        }
    }

private:
    struct Entry {
        std::wstring name;
        Name above = kDisks;
        std::optional<bool> branch;
        std::optional<bool> files;
    };
    /// The names below others, by those and their lower case.
    using Index = std::map<std::pair<Name, std::wstring>, Name, std::less<>>;
    using Children = std::pair<Index::const_iterator, Index::const_iterator>;
    Children ChildrenOf(Name name) const;
    Name NeedBelow(Name above, std::wstring_view name);

    Regional* m_regional;
    std::vector<Entry> m_entries{Entry{}};
    Index m_below;
};

/// A path's names: the drive, or the server with its two separators, then the names below.
std::vector<std::wstring_view> NamesOf(std::wstring_view path);

}  // namespace sylvex
