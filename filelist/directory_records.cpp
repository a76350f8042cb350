#include "filelist/directory_records.h"

#include <algorithm>
#include <unordered_map>

namespace sylvex {

namespace {

/// Relative paths (the desktop, a drive without its root) would be looked for in whatever folder is the current one.
bool IsAbsolute(std::wstring_view folder)
{
    return folder.starts_with(L"\\\\") || (folder.size() >= 3 && folder[1] == L':' && folder[2] == L'\\');
}

/// Whether looking for the entries one by one is cheaper than listing their folder.
bool AreFew(const Ticked::Folder& folder)
{
    constexpr std::size_t kAlwaysFew = 2;
    constexpr std::size_t kMostFew = 16;
    constexpr std::size_t kListedPerSearch = 16;
    const std::size_t count = folder.entries.size();
    return count <= kAlwaysFew || (count <= kMostFew && count * kListedPerSearch < folder.siblings);
}

}  // namespace

DirectoryRecords::DirectoryRecords(FileSystem& files, const Ticked& ticked)
    : m_files(files), m_ticked(ticked), m_records(ticked.Count())
{
    for (const Ticked::Folder& folder : ticked.Folders())
        if (IsAbsolute(folder.path)) ReadFolder(folder);
}

void DirectoryRecords::ReadFolder(const Ticked::Folder& folder)
{
    ReadSingly(folder, AreFew(folder) ? folder.entries : ReadListing(folder));
}

void DirectoryRecords::ReadSingly(const Ticked::Folder& folder, const std::vector<std::uint32_t>& entries)
{
    for (const std::uint32_t entry : entries) {
        const std::wstring_view name = m_ticked.Name(entry);
        const auto search = m_files.Search(folder.path + std::wstring(name));
        if (!search) continue;
        DirectoryRecord& record = m_records[entry];
        Note(search->Entry(), record);
        record.name = name == search->Entry().name ? name : m_names.emplace_back(search->Entry().name);
    }
}

/// Reads all it meets in one listing; gives the entries whose names it has not met to the letter.
std::vector<std::uint32_t> DirectoryRecords::ReadListing(const Ticked::Folder& folder)
{
    std::unordered_map<std::wstring_view, std::uint32_t> wanted;
    wanted.reserve(folder.entries.size());
    for (const std::uint32_t entry : folder.entries)
        wanted.emplace(m_ticked.Name(entry), entry);
    const auto search = m_files.Search(folder.path + L"*");
    if (!search) return {};
    for (bool more = true; more; more = search->Next()) {
        const auto found = wanted.find(search->Entry().name);
        if (found == wanted.end()) continue;
        Note(search->Entry(), m_records[found->second]);
        m_records[found->second].name = found->first;
    }
    std::vector<std::uint32_t> missing;
    for (const std::uint32_t entry : folder.entries) {
        const std::uint32_t first = wanted.at(m_ticked.Name(entry));
        m_records[entry] = m_records[first];
        if (m_records[entry].name.empty()) missing.push_back(entry);
    }
    return missing;
}

void DirectoryRecords::Note(const FileEntry& entry, DirectoryRecord& record)
{
    record.attributes = entry.attributes;
    record.creationTime = entry.creationTime;
    record.lastAccessTime = entry.lastAccessTime;
    record.lastWriteTime = entry.lastWriteTime;
    record.size = entry.size;
    const std::size_t length = std::min(entry.shortName.size(), record.shortName.size() - 1);
    std::copy_n(entry.shortName.begin(), length, record.shortName.begin());
}

}  // namespace sylvex
