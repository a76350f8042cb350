#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace sylvex {

/// Paths of ticked nodes in the order in which the tree shows them, kept by folder and name: a million paths of one
/// folder take little more room than their names.
class Ticked {
public:
    struct Folder {
        std::wstring path;         ///< up to and including the last separator; empty for a path without one
        std::size_t siblings = 0;  ///< how many nodes stood beside the ticked ones
        std::vector<std::uint32_t> entries;
    };

    /// `path` without a separator at its end; `siblings`: the number of its node's parent's children.
    void Add(std::wstring_view path, std::size_t siblings);
    std::size_t Count() const { return m_entries.size(); }
    /// What comes after the path's last separator; valid until the next Add.
    std::wstring_view Name(std::size_t entry) const;
    void AppendPath(std::size_t entry, std::wstring& text) const;
    std::wstring Path(std::size_t entry) const;
    const std::vector<Folder>& Folders() const { return m_folders; }

private:
    struct Entry {
        std::size_t start;
        std::uint32_t length;
        std::uint32_t folder;
    };
    std::uint32_t FolderOf(std::wstring_view path);

    std::wstring m_names;
    std::vector<Entry> m_entries;
    std::vector<Folder> m_folders;
    std::unordered_map<std::wstring, std::uint32_t> m_places;
    std::uint32_t m_last = 0;
};

}  // namespace sylvex
