#include "tests/simulated/simulated_shell.h"

#include <algorithm>
#include <array>

#include "tests/simulated/text.h"

namespace sylvex {

namespace {

constexpr int kFileNotFound = 2;
constexpr int kInvalidPath = 124;
constexpr int kAlreadyExists = 183;

// Files of these types show a picture of their own.
bool HasOwnPicture(const std::wstring& extension)
{
    static const std::array types{L"exe", L"ico", L"cur", L"ani", L"lnk"};
    return std::find(types.begin(), types.end(), extension) != types.end();
}

int NumberOf(std::wstring_view text, int first)
{
    unsigned number = 0;
    for (const wchar_t character : text)
        number = number * 31 + static_cast<unsigned>(FoldCase(character));
    return first + static_cast<int>(number % 900'000);
}

bool IsAbsolute(const std::wstring& path)
{
    return path.size() >= 3 && path[1] == L':' && path[2] == L'\\';
}

}  // namespace

SimulatedShell::SimulatedShell(CallGate& gate, SimulatedDisk& disk, IconTable& icons)
    : m_gate(gate), m_disk(disk), m_icons(icons)
{
    SetModuleIcons(L"Shell32.dll", 61);
}

void SimulatedShell::SetModuleIcons(const std::wstring& module, int count)
{
    m_modules[Folded(module)] = count;
}

void SimulatedShell::SetResourceString(const std::wstring& module, unsigned id, const std::wstring& text)
{
    m_strings[{Folded(module), id}] = text;
}

int SimulatedShell::IndexOfType(const std::wstring& extension)
{
    return NumberOf(extension, 100);
}

std::wstring SimulatedShell::DisplayName(const std::wstring& path)
{
    m_gate.Enter("Shell::DisplayName");
    if (const std::wstring* const label = m_disk.Label(path)) return *label;
    const DiskEntry* const entry = m_disk.Find(path);
    return entry == nullptr ? std::wstring() : entry->name;
}

OwnedIcon SimulatedShell::FileIcon(const std::wstring& path)
{
    m_gate.Enter("Shell::FileIcon");
    if (m_disk.Find(path) == nullptr) return {};
    return {*this, m_icons.Create("icon of " + Utf8(path))};
}

OwnedIcon SimulatedShell::IconInFile(const std::wstring& file, int index)
{
    m_gate.Enter("Shell::IconInFile");
    const std::string picture = Utf8(file) + "," + std::to_string(index);
    const auto module = m_modules.find(Folded(file));
    const bool inFile = m_disk.Find(file) != nullptr && HasOwnPicture(FoldedExtension(file));
    const int count = module != m_modules.end() ? module->second : inFile ? 1 : 0;
    if (index < 0 || index >= count) return {};
    return {*this, m_icons.Create(picture)};
}

int SimulatedShell::SystemIconIndex(const std::wstring& path)
{
    m_gate.Enter("Shell::SystemIconIndex");
    m_indexAsks.push_back(Utf8(path));
    const DiskEntry* const entry = m_disk.Find(path);
    if (entry == nullptr) return 0;
    if (entry->IsFolder()) return kFolderIndex;
    const std::wstring extension = FoldedExtension(entry->name);
    return HasOwnPicture(extension) ? NumberOf(path, 1'000'000) : IndexOfType(extension);
}

int SimulatedShell::SystemIconIndexOfType(const std::wstring& name, std::uint32_t attributes)
{
    m_gate.Enter("Shell::SystemIconIndexOfType");
    m_typeAsks.push_back(Utf8(name));
    if ((attributes & kAttributeDirectory) != 0) return kFolderIndex;
    return IndexOfType(FoldedExtension(name));
}

ImageListHandle SimulatedShell::SystemImageList(bool small)
{
    m_gate.Enter("Shell::SystemImageList");
    return small ? kSmallSystemImages : kNormalSystemImages;
}

std::wstring SimulatedShell::SpecialFolder(int number)
{
    m_gate.Enter("Shell::SpecialFolder");
    const auto found = m_folders.find(number);
    return found == m_folders.end() ? std::wstring() : found->second;
}

std::wstring SimulatedShell::ResourceString(const std::wstring& module, unsigned id)
{
    m_gate.Enter("Shell::ResourceString");
    const auto found = m_strings.find({Folded(module), id});
    return found == m_strings.end() ? std::wstring() : found->second;
}

FileOperationResult SimulatedShell::Operate(unsigned function, unsigned flags, const std::wstring& from,
                                            const std::wstring& to)
{
    m_gate.Enter("Shell::Operate");
    static const std::array names{"nothing", "move", "copy", "delete", "rename"};
    const std::string name = function < names.size() ? names[function] : std::to_string(function);
    m_operations.push_back(name + " " + OneLine(from) + " -> " + OneLine(to) + " (" + std::to_string(flags) + ")");
    if (const auto meanwhile = std::exchange(m_meanwhile, nullptr)) meanwhile();
    if (m_pretends) return {};
    if (m_answers.empty()) return Perform(function, from, to);
    const FileOperationResult answer = m_answers.front();
    m_answers.pop_front();
    return answer.code == 0 && !answer.aborted ? Perform(function, from, to) : answer;
}

int SimulatedShell::MoveLink(const std::wstring& from, const std::wstring& to)
{
    m_gate.Enter("Shell::MoveLink");
    m_operations.push_back("link " + OneLine(from) + " -> " + OneLine(to));
    if (m_linkCode != 0) return m_linkCode;
    if (m_disk.Find(to) != nullptr && m_disk.Find(to) != m_disk.Find(from)) return kAlreadyExists;
    return m_disk.Move(from, to) ? 0 : kFileNotFound;
}

FileOperationResult SimulatedShell::Perform(unsigned function, const std::wstring& from, const std::wstring& to)
{
    const bool toNeeded = function != 3;
    if (!IsAbsolute(from) || (toNeeded && !IsAbsolute(to))) return {kInvalidPath, false};
    if (m_disk.Find(from) == nullptr) return {kFileNotFound, false};
    switch (function) {
        case 4:
            if (m_disk.Find(to) != nullptr && m_disk.Find(to) != m_disk.Find(from)) return {kAlreadyExists, false};
            [[fallthrough]];
        case 1:
            return {m_disk.Move(from, to) ? 0 : kInvalidPath, false};
        case 2:
            return {m_disk.Copy(from, to) ? 0 : kInvalidPath, false};
        case 3:
            return {m_disk.Remove(from) ? 0 : kInvalidPath, false};
        default:
            return {kInvalidPath, false};
    }
}

}  // namespace sylvex
