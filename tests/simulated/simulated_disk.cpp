#include "tests/simulated/simulated_disk.h"

#include <algorithm>
#include <stdexcept>

#include "tests/simulated/simulated_search.h"
#include "tests/simulated/text.h"
#include "tests/simulated/wildcards.h"

namespace sylvex {

namespace {

std::wstring_view WithoutEnd(std::wstring_view path)
{
    while (!path.empty() && path.back() == L'\\')
        path.remove_suffix(1);
    return path;
}

struct SplitPath {
    std::wstring_view folder;  ///< with its separator
    std::wstring_view name;
};

SplitPath Split(std::wstring_view path)
{
    const std::size_t slash = path.rfind(L'\\');
    if (slash == path.npos) return {{}, path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

void Attach(DiskEntry& folder, std::shared_ptr<DiskEntry> entry)
{
    folder.index.emplace(Folded(entry->name), entry.get());
    folder.children.push_back(std::move(entry));
}

std::shared_ptr<DiskEntry> Detach(DiskEntry& folder, std::wstring_view name)
{
    const auto found = folder.index.find(Folded(name));
    if (found == folder.index.end()) return nullptr;
    const auto place = std::find_if(folder.children.begin(), folder.children.end(),
                                    [&](const auto& child) { return child.get() == found->second; });
    std::shared_ptr<DiskEntry> entry = *place;
    folder.children.erase(place);
    folder.index.erase(found);
    return entry;
}

std::shared_ptr<DiskEntry> CopyOf(const DiskEntry& entry)
{
    auto copy = std::make_shared<DiskEntry>(entry);
    copy->children.clear();
    copy->index.clear();
    for (const auto& child : entry.children)
        Attach(*copy, CopyOf(*child));
    return copy;
}

bool Holds(const DiskEntry& entry, const DiskEntry& folder)
{
    if (&entry == &folder) return true;
    return std::any_of(entry.children.begin(), entry.children.end(),
                       [&](const auto& child) { return Holds(*child, folder); });
}

int CountIn(const std::unordered_map<std::wstring, int>& counts, std::wstring_view path)
{
    const auto found = counts.find(Folded(path));
    return found == counts.end() ? 0 : found->second;
}

}  // namespace

DiskEntry* DiskEntry::Child(std::wstring_view child) const
{
    const auto found = index.find(Folded(child));
    return found == index.end() ? nullptr : found->second;
}

void SimulatedDisk::AddDrive(wchar_t letter, DriveKind kind, const std::wstring& label, const std::wstring& fileSystem)
{
    auto root = std::make_shared<DiskEntry>();
    root->attributes = kAttributeDirectory;
    m_drives[FoldCase(letter)] = {kind, label, fileSystem, std::move(root)};
}

DiskEntry& SimulatedDisk::AddFolder(const std::wstring& path)
{
    const auto [above, name] = Split(WithoutEnd(path));
    DiskEntry* const present = Find(path);
    if (present != nullptr && present->IsFolder()) return *present;
    if (present != nullptr || above.empty()) throw std::invalid_argument("cannot be made: " + Utf8(path));
    auto folder = std::make_shared<DiskEntry>();
    folder->name = name;
    folder->attributes = kAttributeDirectory;
    DiskEntry& made = *folder;
    Attach(AddFolder(std::wstring(above)), std::move(folder));
    return made;
}

DiskEntry& SimulatedDisk::AddFile(const std::wstring& path, std::uint64_t size, std::uint32_t attributes)
{
    const auto [above, name] = Split(path);
    if (Find(path) != nullptr) throw std::invalid_argument("is there already: " + Utf8(path));
    auto file = std::make_shared<DiskEntry>();
    file->name = name;
    file->size = size;
    file->attributes = attributes;
    DiskEntry& made = *file;
    Attach(AddFolder(std::wstring(above)), std::move(file));
    return made;
}

const SimulatedDisk::Drive* SimulatedDisk::DriveOf(std::wstring_view path) const
{
    if (path.size() < 2 || path[1] != L':' || (path.size() > 2 && path[2] != L'\\')) return nullptr;
    const auto found = m_drives.find(FoldCase(path[0]));
    return found == m_drives.end() ? nullptr : &found->second;
}

std::shared_ptr<DiskEntry> SimulatedDisk::FindShared(std::wstring_view path) const
{
    const Drive* const drive = DriveOf(path);
    if (drive == nullptr) return nullptr;
    const auto [above, name] = Split(WithoutEnd(path));
    if (above.empty()) return drive->root;
    const std::shared_ptr<DiskEntry> folder = FindShared(above);
    DiskEntry* const child = folder ? folder->Child(name) : nullptr;
    return child == nullptr ? nullptr : child->shared_from_this();
}

DiskEntry* SimulatedDisk::Find(const std::wstring& path) const
{
    return FindShared(path).get();
}

bool SimulatedDisk::Remove(const std::wstring& path)
{
    const auto [above, name] = Split(WithoutEnd(path));
    const std::shared_ptr<DiskEntry> folder = FindShared(above);
    return folder && Detach(*folder, name) != nullptr;
}

SimulatedDisk::Target SimulatedDisk::TargetOf(const DiskEntry& entry, const std::wstring& to) const
{
    const std::shared_ptr<DiskEntry> present = FindShared(to);
    if (present && present->IsFolder() && present.get() != &entry) return {present, entry.name};
    const auto [above, name] = Split(WithoutEnd(to));
    return {FindShared(above), std::wstring(name)};
}

bool SimulatedDisk::Transfer(const std::wstring& from, const std::wstring& to, bool keep)
{
    const std::shared_ptr<DiskEntry> entry = FindShared(from);
    if (!entry || entry->name.empty()) return false;
    const auto [folder, name] = TargetOf(*entry, to);
    if (!folder || !folder->IsFolder() || name.empty() || Holds(*entry, *folder)) return false;
    const DiskEntry* const occupant = folder->Child(name);
    if (occupant != nullptr && (keep || occupant != entry.get())) return false;
    const auto above = FindShared(Split(WithoutEnd(from)).folder);
    const std::shared_ptr<DiskEntry> moved = keep ? CopyOf(*entry) : Detach(*above, entry->name);
    moved->name = name;
    Attach(*folder, moved);
    return true;
}

bool SimulatedDisk::Move(const std::wstring& from, const std::wstring& to)
{
    return Transfer(from, to, false);
}

bool SimulatedDisk::Copy(const std::wstring& from, const std::wstring& to)
{
    return Transfer(from, to, true);
}

const std::wstring* SimulatedDisk::Label(const std::wstring& root) const
{
    const Drive* const drive = DriveOf(root);
    return drive != nullptr && root.size() <= 3 ? &drive->label : nullptr;
}

int SimulatedDisk::Listings(const std::wstring& folder) const
{
    return CountIn(m_listings, WithoutEnd(folder));
}

std::uint32_t SimulatedDisk::LogicalDrives()
{
    m_gate.Enter("FileSystem::LogicalDrives");
    std::uint32_t mask = 0;
    for (const auto& [letter, drive] : m_drives)
        mask |= 1U << (letter - L'a');
    return mask;
}

unsigned SimulatedDisk::DriveType(const std::wstring& root)
{
    m_gate.Enter("FileSystem::DriveType");
    const Drive* const drive = DriveOf(root);
    return static_cast<unsigned>(drive == nullptr ? DriveKind::NoRoot : drive->kind);
}

std::optional<std::wstring> SimulatedDisk::FileSystemName(const std::wstring& root)
{
    m_gate.Enter("FileSystem::FileSystemName");
    const Drive* const drive = DriveOf(root.empty() ? L"C:\\" : root);
    if (drive == nullptr || drive->fileSystem.empty()) return std::nullopt;
    return drive->fileSystem;
}

std::unique_ptr<FileSearch> SimulatedDisk::Search(const std::wstring& pattern)
{
    m_gate.Enter("FileSystem::Search");
    ++m_searches;
    const auto [above, name] = Split(pattern);
    const Drive* const drive = DriveOf(pattern);
    const std::shared_ptr<DiskEntry> folder = FindShared(above);
    if (drive == nullptr || drive->fileSystem.empty() || !folder || name.empty()) return nullptr;
    if (!folder->IsFolder() || !folder->readable) return nullptr;
    if (Wildcards::Present(name)) ++m_listings[Folded(WithoutEnd(above))];
    auto search = std::make_unique<SimulatedSearch>(folder, folder == drive->root, name, m_gate, m_open);
    return search->Found() ? std::move(search) : nullptr;
}

bool SimulatedDisk::IsLink(const std::wstring& path)
{
    m_gate.Enter("FileSystem::IsLink");
    const DiskEntry* const entry = Find(path);
    return entry != nullptr && (entry->attributes & kAttributeReparse) != 0;
}

std::optional<std::uint64_t> SimulatedDisk::FreeSpace(const std::wstring& folder)
{
    m_gate.Enter("FileSystem::FreeSpace");
    const auto found = m_free.find(folder.front());
    return found == m_free.end() ? std::nullopt : std::optional(found->second);
}

std::wstring SimulatedDisk::WindowsDirectory()
{
    m_gate.Enter("FileSystem::WindowsDirectory");
    return L"C:\\Windows";
}

std::wstring SimulatedDisk::SystemDirectory()
{
    m_gate.Enter("FileSystem::SystemDirectory");
    return L"C:\\Windows\\System32";
}

std::wstring SimulatedDisk::TempDirectory()
{
    m_gate.Enter("FileSystem::TempDirectory");
    return L"C:\\Temp\\";
}

}  // namespace sylvex
