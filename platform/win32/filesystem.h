#pragma once

#include "platform/filesystem.h"

namespace sylvex {

/// The machine's drives and folders.
class Win32FileSystem : public FileSystem {
public:
    std::uint32_t LogicalDrives() override;
    unsigned DriveType(const std::wstring& root) override;
    std::optional<std::wstring> FileSystemName(const std::wstring& root) override;
    std::unique_ptr<FileSearch> Search(const std::wstring& pattern) override;
    bool IsLink(const std::wstring& path) override;
    std::optional<std::uint64_t> FreeSpace(const std::wstring& folder) override;
    std::wstring WindowsDirectory() override;
    std::wstring SystemDirectory() override;
    std::wstring TempDirectory() override;
};

/// A path in the form that the platform takes at any length; short and relative ones stay as they are.
std::wstring UnlimitedPath(const std::wstring& path);

}  // namespace sylvex
