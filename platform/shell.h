#pragma once

#include <string>

#include "platform/types.h"

namespace sylvex {

class Shell;

/// Owns an icon; destroys it through the shell that gave it.
class OwnedIcon {
public:
    OwnedIcon() = default;
    OwnedIcon(Shell& shell, IconHandle icon) : m_shell(&shell), m_icon(icon) {}
    OwnedIcon(OwnedIcon&& other) noexcept : m_shell(other.m_shell), m_icon(other.m_icon) { other.m_icon = 0; }
    OwnedIcon& operator=(OwnedIcon&& other) noexcept;
    ~OwnedIcon() { Reset(); }
    IconHandle Get() const { return m_icon; }
    explicit operator bool() const { return m_icon != 0; }

private:
    void Reset() noexcept;
    Shell* m_shell = nullptr;
    IconHandle m_icon = 0;
};

/// What one file operation of the shell answered.
struct FileOperationResult {
    int code = 0;          ///< 0 done, otherwise the shell's own code
    bool aborted = false;  ///< the user cancelled
};

/// The shell's services: names, icons, special folders, and the two calls that change the disk.
class Shell {
public:
    virtual ~Shell() = default;
    /// The name the shell shows for `path`; empty when it has none.
    virtual std::wstring DisplayName(const std::wstring& path) = 0;
    /// The small icon of the file at `path`.
    virtual OwnedIcon FileIcon(const std::wstring& path) = 0;
    /// Icon number `index` (from 0) of a module or icon file; empty when it holds none.
    virtual OwnedIcon IconInFile(const std::wstring& file, int index) = 0;
    virtual void DestroyIcon(IconHandle icon) noexcept = 0;
    /// Index of the small icon of `path` in the system image list, 0 when unknown. The path itself is looked at.
    virtual int SystemIconIndex(const std::wstring& path) = 0;
    /// The same, told by the name's type alone (`attributes` as in a directory entry), without touching the disk.
    virtual int SystemIconIndexOfType(const std::wstring& name, std::uint32_t attributes) = 0;
    /// The system image list, small or normal; it belongs to the shell.
    virtual ImageListHandle SystemImageList(bool small) = 0;
    /// The path of a special folder by shell number (5: the user's documents), empty when there is none.
    virtual std::wstring SpecialFolder(int number) = 0;
    /// String resource `id` of a module in the system folder, empty when the module or the string is missing.
    virtual std::wstring ResourceString(const std::wstring& module, unsigned id) = 0;
    /// Runs file operation `function` (1 move, 2 copy, 3 delete, 4 rename) on one absolute path.
    virtual FileOperationResult Operate(unsigned function, unsigned flags, const std::wstring& from,
                                        const std::wstring& to) = 0;
    /// Gives a link (see FileSystem::IsLink) the path `to` on its own volume, which nothing may have yet. What it
    /// points to is never touched. 0, or the platform's error number: 50 where it cannot act on the link itself.
    virtual int MoveLink(const std::wstring& from, const std::wstring& to) = 0;
};

inline void OwnedIcon::Reset() noexcept
{
    if (m_icon != 0) m_shell->DestroyIcon(m_icon);
    m_icon = 0;
}

inline OwnedIcon& OwnedIcon::operator=(OwnedIcon&& other) noexcept
{
    if (this == &other) return *this;
    Reset();
    m_shell = other.m_shell;
    m_icon = other.m_icon;
    other.m_icon = 0;
    return *this;
}

}  // namespace sylvex
