#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/filesystem.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

/// The time of every entry that a test gives no other: 2026-01-02 03:04:05 UTC.
constexpr std::int64_t kFileTime = 134'117'966'450'000'000;

/// The platform's numbers of drive types.
enum class DriveKind : unsigned { Unknown = 0, NoRoot = 1, Removable = 2, Fixed = 3, Remote = 4, CdRom = 5, Ram = 6 };

/// A file or folder. Tests write to the fields they care about, but never to `name`, `children` and `index`.
struct DiskEntry : std::enable_shared_from_this<DiskEntry> {
    std::wstring name;
    std::wstring shortName;
    std::uint32_t attributes = 0;
    std::int64_t creationTime = kFileTime;
    std::int64_t lastAccessTime = kFileTime;
    std::int64_t lastWriteTime = kFileTime;
    std::uint64_t size = 0;
    std::uint32_t reparseTag = 0;
    std::wstring contents;
    bool readable = true;  ///< of a folder: can be listed
    std::vector<std::shared_ptr<DiskEntry>> children;
    std::unordered_map<std::wstring, DiskEntry*> index;

    bool IsFolder() const { return (attributes & kAttributeDirectory) != 0; }
    /// Null when there is no such child; letter case plays no part.
    DiskEntry* Child(std::wstring_view child) const;
};

/// Drives, folders and files in memory. Paths are absolute ones on a drive, such as C:\a\b, a folder's with or without
/// a separator at its end.
class SimulatedDisk final : public FileSystem {
public:
    explicit SimulatedDisk(CallGate& gate) : m_gate(gate) {}

    /// A drive by its letter; `label` is what the shell shows. Without a file system there is no volume in it.
    void AddDrive(wchar_t letter, DriveKind kind, const std::wstring& label, const std::wstring& fileSystem);
    /// Makes a folder and those above it; gives the one that is there already. The drive must exist.
    DiskEntry& AddFolder(const std::wstring& path);
    /// Makes a file, and the folders above it.
    DiskEntry& AddFile(const std::wstring& path, std::uint64_t size = 0, std::uint32_t attributes = 32);
    /// The entry at a path, null when there is none; gives the folder of a drive's root, too.
    DiskEntry* Find(const std::wstring& path) const;
    /// Removes an entry with all below it; false when there is none.
    bool Remove(const std::wstring& path);
    /// Moves an entry into a folder that exists, otherwise to a new name in a folder that exists; false when it cannot.
    bool Move(const std::wstring& from, const std::wstring& to);
    bool Copy(const std::wstring& from, const std::wstring& to);
    /// What the shell shows for a drive's root; null for anything else.
    const std::wstring* Label(const std::wstring& root) const;
    /// What FreeSpace answers for a drive; at first nothing.
    void SetFreeSpace(wchar_t letter, std::uint64_t bytes) { m_free[letter] = bytes; }

    /// How often the folder was listed (a search with wildcards in it).
    int Listings(const std::wstring& folder) const;
    /// All searches since the beginning.
    int Searches() const { return m_searches; }
    /// Searches that nobody has closed.
    int OpenSearches() const { return *m_open; }

    std::uint32_t LogicalDrives() override;
    unsigned DriveType(const std::wstring& root) override;
    std::optional<std::wstring> FileSystemName(const std::wstring& root) override;
    std::unique_ptr<FileSearch> Search(const std::wstring& pattern) override;
    bool IsLink(const std::wstring& path) override;
    std::optional<std::uint64_t> FreeSpace(const std::wstring& folder) override;
    std::wstring WindowsDirectory() override;
    std::wstring SystemDirectory() override;
    std::wstring TempDirectory() override;

private:
    struct Drive {
        DriveKind kind;
        std::wstring label;
        std::wstring fileSystem;
        std::shared_ptr<DiskEntry> root;
    };
    struct Target {
        std::shared_ptr<DiskEntry> folder;
        std::wstring name;
    };
    const Drive* DriveOf(std::wstring_view path) const;
    std::shared_ptr<DiskEntry> FindShared(std::wstring_view path) const;
    bool Transfer(const std::wstring& from, const std::wstring& to, bool keep);
    Target TargetOf(const DiskEntry& entry, const std::wstring& to) const;

    CallGate& m_gate;
    std::map<wchar_t, Drive> m_drives;
    std::map<wchar_t, std::uint64_t> m_free;
    std::unordered_map<std::wstring, int> m_listings;
    std::shared_ptr<int> m_open = std::make_shared<int>(0);
    int m_searches = 0;
};

}  // namespace sylvex
