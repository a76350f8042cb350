#pragma once

#include <optional>
#include <string>

#include "widgets/context.h"

namespace sylvex {

/// The only way in which the control changes the disk.
class DiskOperations {
public:
    explicit DiskOperations(const Context& context) : m_context(context) {}

    /// Has the shell move (`Flavor` 4), rename (128), or, which nothing of ours asks for, copy (1, 2, 64) or delete (8,
    /// 16) one path, with the shell's own questions and progress; -1 when the person cancelled, otherwise 0. What fails
    /// is shown in a box: the shell's number, or "Operation Failed" for a cancel. The shell is asked only for whole
    /// paths of one file or folder, and to move only into a folder that exists; anything else counts as the shell's
    /// failure 124. Not moved are a root (116), what is not there (2), and what would take the place of a file, or a
    /// file that of a folder (183): not every shell asks before it replaces one. A link is moved or renamed itself,
    /// within its volume; 50 where the platform cannot. A shell that reports success and leaves the source where it was
    /// has failed with 5, or 112 where the target has no room.
    long WindowsDiskOps(const std::wstring& Source, const std::wstring& dest, short Flavor);
    /// Whether the last operation was done; a move, when nothing is left at the old place.
    bool Done() const { return m_done; }

private:
    FileOperationResult Operate(unsigned wFunc, unsigned fFlags, const std::wstring& Source, const std::wstring& dest);
    std::optional<bool> IsFolder(const std::wstring& path);
    int Obstacle(unsigned wFunc, const std::wstring& Source, const std::wstring& dest);
    int OperateOnLink(unsigned wFunc, const std::wstring& Source, const std::wstring& dest);
    bool Left(unsigned wFunc, const std::wstring& Source, const std::wstring& dest);
    bool HasNoRoom(const std::wstring& Source, const std::wstring& dest);

    const Context& m_context;
    bool m_done = false;
};

}  // namespace sylvex
