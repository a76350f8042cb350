#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/ticked.h"
#include "platform/filesystem.h"

namespace sylvex {

/// What a folder's listing says of one ticked entry; all empty for one that cannot be read.
struct DirectoryRecord {
    static constexpr const wchar_t* kRecordName = L"{WIN32_FIND_DATA}";

    std::uint32_t attributes = 0;
    std::int64_t creationTime = 0;    ///< 100-nanosecond intervals since 1601-01-01 UTC
    std::int64_t lastAccessTime = 0;  ///< likewise
    std::int64_t lastWriteTime = 0;   ///< likewise
    std::uint64_t size = 0;
    std::wstring_view name;
    std::array<wchar_t, 14> shortName{};

    /// Entries that cannot be read are shown like folders.
    bool ShownAsFolder() const { return name.empty() || (attributes & kAttributeDirectory) != 0; }
};

/// The directory records of ticked paths as they are on disk now, read folder by folder.
class DirectoryRecords {
public:
    /// `ticked` is complete and outlives the records.
    DirectoryRecords(FileSystem& files, const Ticked& ticked);

    const DirectoryRecord& Of(std::size_t entry) const { return m_records[entry]; }

private:
    void ReadFolder(const Ticked::Folder& folder);
    void ReadSingly(const Ticked::Folder& folder, const std::vector<std::uint32_t>& entries);
    std::vector<std::uint32_t> ReadListing(const Ticked::Folder& folder);
    void Note(const FileEntry& entry, DirectoryRecord& record);

    FileSystem& m_files;
    const Ticked& m_ticked;
    std::vector<DirectoryRecord> m_records;
    std::deque<std::wstring> m_names;  // those that the disk spells differently
};

}  // namespace sylvex
