#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/shell.h"
#include "tests/simulated/icon_table.h"
#include "tests/simulated/simulated_disk.h"

namespace sylvex {

/// The shell of the simulated desktop. It asks and records in words; Shell32.dll holds icons 0 to 60.
class SimulatedShell final : public Shell {
public:
    static constexpr ImageListHandle kSmallSystemImages = 0x5A01;
    static constexpr ImageListHandle kNormalSystemImages = 0x5A02;

    SimulatedShell(CallGate& gate, SimulatedDisk& disk, IconTable& icons);
    /// Gives a module (by file name) the icons 0 to count - 1.
    void SetModuleIcons(const std::wstring& module, int count);
    /// An empty path: the shell has no such folder. At first only 5 is set, to C:\My Documents.
    void SetSpecialFolder(int number, const std::wstring& path) { m_folders[number] = path; }
    void SetResourceString(const std::wstring& module, unsigned id, const std::wstring& text);
    /// The answer of the next file operation that has none yet. Anything but {0, false} leaves the disk alone.
    void AnswerOperation(FileOperationResult result) { m_answers.push_back(result); }
    /// From now on the shell answers success and does nothing.
    void Pretend() { m_pretends = true; }
    /// What MoveLink answers; at first it does what it says.
    void RefuseLinks(int code) { m_linkCode = code; }
    /// Runs once, while the next file operation is under way.
    void WhileNextOperation(std::function<void()> meanwhile) { m_meanwhile = std::move(meanwhile); }

    /// Index of files of a type in the system image list; the extension without its dot, empty for none.
    static int IndexOfType(const std::wstring& extension);
    /// Index of folders.
    static constexpr int kFolderIndex = 3;

    /// What was asked, in order: paths for SystemIconIndex, names for SystemIconIndexOfType.
    const std::vector<std::string>& IconIndexAsks() const { return m_indexAsks; }
    const std::vector<std::string>& TypeIndexAsks() const { return m_typeAsks; }
    /// One line a file operation: "move C:\a -> C:\b (flags)".
    const std::vector<std::string>& Operations() const { return m_operations; }

    std::wstring DisplayName(const std::wstring& path) override;
    OwnedIcon FileIcon(const std::wstring& path) override;
    OwnedIcon IconInFile(const std::wstring& file, int index) override;
    void DestroyIcon(IconHandle icon) noexcept override { m_icons.Destroy(icon); }
    int SystemIconIndex(const std::wstring& path) override;
    int SystemIconIndexOfType(const std::wstring& name, std::uint32_t attributes) override;
    ImageListHandle SystemImageList(bool small) override;
    std::wstring SpecialFolder(int number) override;
    std::wstring ResourceString(const std::wstring& module, unsigned id) override;
    FileOperationResult Operate(unsigned function, unsigned flags, const std::wstring& from,
                                const std::wstring& to) override;
    int MoveLink(const std::wstring& from, const std::wstring& to) override;

private:
    FileOperationResult Perform(unsigned function, const std::wstring& from, const std::wstring& to);
    CallGate& m_gate;
    SimulatedDisk& m_disk;
    IconTable& m_icons;
    std::map<std::wstring, int> m_modules;
    std::map<int, std::wstring> m_folders{{5, L"C:\\My Documents"}};
    std::map<std::pair<std::wstring, unsigned>, std::wstring> m_strings;
    std::deque<FileOperationResult> m_answers;
    std::function<void()> m_meanwhile;
    bool m_pretends = false;
    int m_linkCode = 0;
    std::vector<std::string> m_indexAsks;
    std::vector<std::string> m_typeAsks;
    std::vector<std::string> m_operations;
};

}  // namespace sylvex
