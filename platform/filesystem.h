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
    virtual std::wstring WindowsDirectory() = 0;
    virtual std::wstring SystemDirectory() = 0;
    /// Ends in a separator.
    virtual std::wstring TempDirectory() = 0;
};

}  // namespace sylvex
