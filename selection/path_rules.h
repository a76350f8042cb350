#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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
    /// One name with what is said of it and of what lies below.
    struct Entry {
        std::wstring name;  ///< as spelt where it was first met
        std::optional<bool> branch;
        std::optional<bool> files;
        std::map<std::wstring, std::unique_ptr<Entry>> below;  ///< by the names in lower case

        /// True for what must be a folder, since more is said of what is in it.
        bool IsFolder() const { return files.has_value() || !below.empty(); }
    };

    explicit PathRules(Regional& regional) : m_regional(&regional), m_root(std::make_unique<Entry>()) {}

    /// Takes the place of an earlier rule of that path and reach.
    void Add(const Rule& rule);
    /// Takes away what follows from the rules above it.
    void Minimise();
    bool Empty() const { return m_root->below.empty(); }
    /// Whether the file is taken, or, with a separator behind the path, what is new in the folder.
    bool Includes(std::wstring_view path) const;
    /// From the outermost in; names in the order of their lower case.
    std::vector<Rule> Rules() const;
    /// The entry of that name right below, null for none.
    const Entry* Find(const Entry& entry, std::wstring_view name) const;
    /// The whole disks: entries are drives ("C:") and servers ("\\server").
    const Entry& Root() const { return *m_root; }

private:
    Regional* m_regional;
    std::unique_ptr<Entry> m_root;
};

/// A path's names: the drive, or the server with its two separators, then the names below.
std::vector<std::wstring_view> NamesOf(std::wstring_view path);

}  // namespace sylvex
