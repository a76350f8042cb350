#include "filelist/ticked.h"

#include <algorithm>

namespace sylvex {

std::uint32_t Ticked::FolderOf(std::wstring_view path)
{
    // Siblings come one after the other.
    if (m_last < m_folders.size() && m_folders[m_last].path == path) return m_last;
    const auto [found, isNew] = m_places.try_emplace(std::wstring(path), static_cast<std::uint32_t>(m_folders.size()));
    if (isNew) m_folders.push_back({found->first, 0, {}});
    return m_last = found->second;
}

void Ticked::Add(std::wstring_view path, std::size_t siblings)
{
    const std::size_t start = path.rfind(L'\\') + 1;
    const std::uint32_t place = FolderOf(path.substr(0, start));
    Folder& folder = m_folders[place];
    folder.siblings = std::max(folder.siblings, siblings);
    folder.entries.push_back(static_cast<std::uint32_t>(m_entries.size()));
    m_entries.push_back({m_names.size(), static_cast<std::uint32_t>(path.size() - start), place});
    m_names += path.substr(start);
}

std::wstring_view Ticked::Name(std::size_t entry) const
{
    return std::wstring_view(m_names).substr(m_entries[entry].start, m_entries[entry].length);
}

void Ticked::AppendPath(std::size_t entry, std::wstring& text) const
{
    text += m_folders[m_entries[entry].folder].path;
    text += Name(entry);
}

std::wstring Ticked::Path(std::size_t entry) const
{
    std::wstring path;
    AppendPath(entry, path);
    return path;
}

}  // namespace sylvex
