#include "dragdrop/disk_operations.h"

#include <vector>

#include "platform/path_names.h"
#include "platform/text.h"

namespace sylvex {

namespace {

enum Function : unsigned { kNothing = 0, kMove = 1, kCopy = 2, kDelete = 3, kRename = 4 };

/// The shell's own codes for what it would not do either.
constexpr int kNotFound = 2;
constexpr int kNotDone = 5;
constexpr int kDiskFull = 112;
constexpr int kRootFolder = 116;
constexpr int kInvalidPath = 124;
constexpr int kNameInUse = 183;

constexpr unsigned kManyTargets = 1;
constexpr unsigned kToTheBinUnasked = 0x50;

struct Operation {
    unsigned function;
    unsigned flags;
};

Operation OperationOf(short Flavor)
{
    switch (Flavor) {
        case 1:
        case 2:
            return {kCopy, 0};
        case 4:
            return {kMove, 0};
        case 8:
            return {kDelete, 0};
        case 16:
            return {kDelete, kToTheBinUnasked};
        case 64:
            return {kCopy, kManyTargets};
        case 128:
            return {kRename, 0};
        default:
            return {kNothing, 0};
    }
}

/// The last part of a path that does not end in a separator.
std::wstring NameOf(const std::wstring& path)
{
    return path.substr(path.rfind(L'\\') + 1);
}

/// The path in the folder that what is moved there gets.
std::wstring PlaceIn(const std::wstring& folder, const std::wstring& source)
{
    return (folder.ends_with(L'\\') ? folder : folder + L"\\") + NameOf(WithoutSeparator(source));
}

/// Whether what lies at the path, with all below it, holds more bytes than that. Links are not followed.
bool IsLargerThan(FileSystem& files, const std::wstring& path, std::uint64_t bytes)
{
    std::uint64_t sum = 0;
    std::vector<std::wstring> patterns{path};
    while (!patterns.empty() && sum <= bytes) {
        const std::wstring pattern = std::move(patterns.back());
        patterns.pop_back();
        const std::wstring folder = pattern.substr(0, pattern.rfind(L'\\') + 1);
        const auto search = files.Search(pattern);
        for (bool more = search != nullptr; more; more = search->Next()) {
            const FileEntry& entry = search->Entry();
            sum += entry.IsDirectory() ? 0 : entry.size;
            const bool below = entry.IsDirectory() && (entry.attributes & kAttributeReparse) == 0;
            if (below && entry.name != L"." && entry.name != L"..")
                patterns.push_back(folder + std::wstring(entry.name) + L"\\*.*");
        }
    }
    return sum > bytes;
}

}  // namespace

/// Whether what is at the path is a folder; nothing when there is nothing.
std::optional<bool> DiskOperations::IsFolder(const std::wstring& path)
{
    FileSystem& files = m_context.platform.files;
    if (IsRoot(path) || IsShare(path)) {  // which have no entry of their own
        const std::wstring root = path.ends_with(L'\\') ? path : path + L"\\";
        const bool there = files.Search(root + L"*.*") != nullptr || files.FileSystemName(root).has_value();
        return there ? std::optional(true) : std::nullopt;
    }
    const auto entry = files.Search(WithoutSeparator(path));
    return entry != nullptr ? std::optional(entry->Entry().IsDirectory()) : std::nullopt;
}

/// Why the shell is not asked, as one of its codes; 0 when it is.
int DiskOperations::Obstacle(unsigned wFunc, const std::wstring& Source, const std::wstring& dest)
{
    if (!IsWholePath(Source) || !IsWholePath(dest)) return kInvalidPath;
    // The shell would act on another file.
    if (LosesAnEnding(Source) || LosesAnEnding(dest)) return kInvalidPath;
    if (IsRoot(Source) || IsShare(Source)) return kRootFolder;
    if (wFunc != kMove) return 0;
    // Into a folder that has gone the shell would move under that folder's name.
    if (!IsFolder(dest).value_or(false)) return kInvalidPath;
    const std::wstring path = WithoutSeparator(Source);
    const auto source = IsFolder(path);
    if (!source) return kNotFound;
    const auto taken = IsFolder(PlaceIn(dest, path));
    // Only two folders can become one, which the shell asks about.
    return taken && !(*source && *taken) ? kNameInUse : 0;
}

FileOperationResult DiskOperations::Operate(unsigned wFunc, unsigned fFlags, const std::wstring& Source,
                                            const std::wstring& dest)
{
    if (const int obstacle = Obstacle(wFunc, Source, dest)) return {obstacle, false};
    const std::wstring path = WithoutSeparator(Source);
    const bool moves = wFunc == kMove || wFunc == kRename;
    if (moves && m_context.platform.files.IsLink(path)) return {OperateOnLink(wFunc, path, dest), false};
    FileOperationResult answer = m_context.platform.shell.Operate(wFunc, fFlags, path, dest);
    if (moves && answer.code == 0 && !answer.aborted && Left(wFunc, path, dest))
        answer.code = wFunc == kMove && HasNoRoom(path, dest) ? kDiskFull : kNotDone;
    return answer;
}

/// The shell would follow the link on some platforms, and move what it points to.
int DiskOperations::OperateOnLink(unsigned wFunc, const std::wstring& Source, const std::wstring& dest)
{
    const std::wstring target = wFunc == kMove ? PlaceIn(dest, Source) : dest;
    // Another letter case of its own name is free.
    const bool taken = IsFolder(target) && !EqualName(m_context.platform.regional, target, Source);
    return taken ? kNameInUse : m_context.platform.shell.MoveLink(Source, target);
}

/// Whether what was to be moved or renamed is still what it was, whatever the shell says.
bool DiskOperations::Left(unsigned wFunc, const std::wstring& Source, const std::wstring& dest)
{
    const auto entry = m_context.platform.files.Search(Source);
    if (entry == nullptr) return false;
    const bool sameName = wFunc == kRename && EqualName(m_context.platform.regional, Source, dest);
    return !sameName || entry->Entry().name != NameOf(dest);
}

/// Whether a move to another volume had too little room there.
bool DiskOperations::HasNoRoom(const std::wstring& Source, const std::wstring& dest)
{
    FileSystem& files = m_context.platform.files;
    constexpr std::size_t kDriveLength = 3;
    if (EqualName(m_context.platform.regional, Source.substr(0, kDriveLength), dest.substr(0, kDriveLength)))
        return false;
    const auto room = files.FreeSpace(dest.ends_with(L'\\') ? dest : dest + L"\\");
    return room && IsLargerThan(files, Source, *room);
}

long DiskOperations::WindowsDiskOps(const std::wstring& Source, const std::wstring& dest, short Flavor)
{
    long Result = 0;
    const auto [wFunc, fFlags] = OperationOf(Flavor);
    FileOperationResult answer;
    m_done = false;
    return Trapped(m_context.module, VARIABLES(Source, dest, Flavor),
                   VARIABLES(wFunc, fFlags, answer.code, answer.aborted, Result), [&](int& line) {
                       MessageBoxes& boxes = m_context.platform.boxes;
                       line = 3;
                       answer = Operate(wFunc, fFlags, Source, dest);
                       m_done = answer.code == 0 && !answer.aborted;
                       line = 4;
                       if (answer.code != 0) {
                           boxes.Show(m_context.TV.hWnd(), std::to_wstring(answer.code), {}, kBoxCritical);
                       } else if (answer.aborted) {
                           line = 5;
                           boxes.Show(m_context.TV.hWnd(), L"Operation Failed", {}, kBoxCritical);
                           Result = -1;
                       }
                       return Result;
                   });
}

}  // namespace sylvex
