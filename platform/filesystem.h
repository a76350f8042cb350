#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/types.h"

namespace sylvex {

/// A listing under way; closing it is the destructor's work.
class FileSearch {
public:
    virtual ~FileSearch() = default;
    /// The present entry; its texts are valid until Next.
    virtual const FileEntry& Entry() const = 0;
    /// Moves to the next entry; false at the end.
    virtual bool Next() = 0;
};

/// Read access to drives and folders. Paths may be longer than 260 characters; nothing here changes the disk.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// Bit n is drive letter 'A' + n.
    virtual std::uint32_t LogicalDrives() = 0;
    /// The platform's drive type (0 unknown .. 6 RAM disk) of a root such as C:\ .
    virtual unsigned DriveType(const std::wstring& root) = 0;
    /// The name of the volume's file system, nothing when the volume cannot be asked. An empty root is the current one.
    virtual std::optional<std::wstring> FileSystemName(const std::wstring& root) = 0;
    /// Starts a listing of `pattern` (a path, the last part may hold wildcards); null when nothing is found or
    /// readable.
    virtual std::unique_ptr<FileSearch> Search(const std::wstring& pattern) = 0;
    /// Whether the entry at the path (no separator at its end) is itself a link to another place: a symbolic link, a
    /// junction, a mounted folder. False where the platform cannot tell.
    virtual bool IsLink(const std::wstring& path) = 0;
    /// How many bytes this user may still write to the volume of `folder`; nothing when it cannot be asked.
    virtual std::optional<std::uint64_t> FreeSpace(const std::wstring& folder) = 0;
    virtual std::wstring WindowsDirectory() = 0;
    virtual std::wstring SystemDirectory() = 0;
    /// Ends in a separator.
    virtual std::wstring TempDirectory() = 0;
};

}  // namespace sylvex
