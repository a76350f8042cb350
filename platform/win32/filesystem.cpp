#include "platform/win32/filesystem.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/win32/handles.h"

namespace sylvex {
namespace {

// From here on the platform refuses the plain form of a folder's path.
constexpr std::size_t kPlainLimit = 248;

using UniqueSearch = std::unique_ptr<void, HandleCloser<&FindClose>>;

std::int64_t TimeOf(const FILETIME& time)
{
    return static_cast<std::int64_t>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart);
}

class Win32FileSearch : public FileSearch {
public:
    // Null when nothing is found.
    static std::unique_ptr<Win32FileSearch> Start(const std::wstring& pattern)
    {
        auto search = std::make_unique<Win32FileSearch>();
        auto* const found = Find(UnlimitedPath(pattern), search->m_data);
        if (found == INVALID_HANDLE_VALUE) return nullptr;
        search->m_search.reset(found);
        search->Describe();
        return search;
    }

    const FileEntry& Entry() const override { return m_entry; }

    bool Next() override
    {
        const QuietDisk quiet;
        if (!FindNextFileW(m_search.get(), &m_data)) return false;
        Describe();
        return true;
    }

private:
    static HANDLE Find(const std::wstring& pattern, WIN32_FIND_DATAW& data)
    {
        const QuietDisk quiet;
        const bool many = pattern.find_first_of(L"*?", pattern.starts_with(L"\\\\?\\") ? 4 : 0) != pattern.npos;
        if (many) {
            auto* const found = FindFirstFileExW(pattern.c_str(), FindExInfoStandard, &data, FindExSearchNameMatch,
                                                 nullptr, FIND_FIRST_EX_LARGE_FETCH);
            // Some file systems and older systems do not know the flag.
            if (found != INVALID_HANDLE_VALUE || GetLastError() != ERROR_INVALID_PARAMETER) return found;
        }
        return FindFirstFileW(pattern.c_str(), &data);
    }

    void Describe()
    {
        m_entry.attributes = m_data.dwFileAttributes;
        m_entry.reparseTag = (m_data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? m_data.dwReserved0 : 0;
        m_entry.creationTime = TimeOf(m_data.ftCreationTime);
        m_entry.lastAccessTime = TimeOf(m_data.ftLastAccessTime);
        m_entry.lastWriteTime = TimeOf(m_data.ftLastWriteTime);
        m_entry.size = ULARGE_INTEGER{{m_data.nFileSizeLow, m_data.nFileSizeHigh}}.QuadPart;
        m_entry.name = m_data.cFileName;
        m_entry.shortName = m_data.cAlternateFileName;
    }

    WIN32_FIND_DATAW m_data{};
    FileEntry m_entry;
    UniqueSearch m_search;
};

using UniqueFile = std::unique_ptr<void, HandleCloser<&CloseHandle>>;

/// Where the path leads when every link in it has been followed; empty when the platform does not tell.
std::wstring FinalPath(const std::wstring& path)
{
    const QuietDisk quiet;
    auto* const opened = CreateFileW(UnlimitedPath(path).c_str(), FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return {};
    const UniqueFile file(opened);
    std::wstring final(GetFinalPathNameByHandleW(file.get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    const auto length =
        GetFinalPathNameByHandleW(file.get(), final.data(), static_cast<DWORD>(final.size()), FILE_NAME_NORMALIZED);
    final.resize(length < final.size() ? length : 0);
    return final;
}

bool SamePath(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

template <typename Call>
std::wstring DirectoryFrom(Call call)
{
    std::wstring path(MAX_PATH, L'\0');
    auto length = call(path.data(), static_cast<UINT>(path.size()));
    if (length > path.size()) {
        path.resize(length);
        length = call(path.data(), static_cast<UINT>(path.size()));
    }
    path.resize(std::min<std::size_t>(length, path.size()));
    return path;
}

}  // namespace

std::wstring UnlimitedPath(const std::wstring& path)
{
    if (path.size() < kPlainLimit && !LosesAnEnding(path)) return path;
    const bool share = path.starts_with(L"\\\\") && path[2] != L'?' && path[2] != L'.';
    const bool drive = path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
    if (!share && !drive) return path;
    auto prefixed = share ? L"\\\\?\\UNC" + path.substr(1) : L"\\\\?\\" + path;
    // Behind the prefix the platform no longer translates the other separator.
    std::replace(prefixed.begin(), prefixed.end(), L'/', L'\\');
    return prefixed;
}

std::uint32_t Win32FileSystem::LogicalDrives()
{
    return GetLogicalDrives();
}

unsigned Win32FileSystem::DriveType(const std::wstring& root)
{
    const QuietDisk quiet;
    return GetDriveTypeW(root.c_str());
}

std::optional<std::wstring> Win32FileSystem::FileSystemName(const std::wstring& root)
{
    const QuietDisk quiet;
    wchar_t name[MAX_PATH + 1] = {};
    const auto* const asked = root.empty() ? nullptr : root.c_str();
    if (!GetVolumeInformationW(asked, nullptr, 0, nullptr, nullptr, nullptr, name, MAX_PATH + 1)) return std::nullopt;
    return name;
}

std::unique_ptr<FileSearch> Win32FileSystem::Search(const std::wstring& pattern)
{
    return Win32FileSearch::Start(pattern);
}

bool Win32FileSystem::IsLink(const std::wstring& path)
{
    WIN32_FIND_DATAW entry{};
    auto* const found = FindFirstFileW(UnlimitedPath(path).c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE) return false;
    const UniqueSearch owned(found);
    // Other reparse points, as those of cloud stores, are what they seem. A platform that names no tag means a link.
    const bool reparse = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (reparse && (entry.dwReserved0 == 0 || IsReparseTagNameSurrogate(entry.dwReserved0))) return true;
    // A platform that does not mark its links follows them.
    const auto end = path.rfind(L'\\');
    if (end == path.npos) return false;
    auto folder = FinalPath(path.substr(0, end + 1));
    const auto itself = FinalPath(path);
    if (folder.empty() || itself.empty()) return false;
    if (folder.back() != L'\\') folder += L'\\';
    return !SamePath(folder + entry.cFileName, itself);
}

std::optional<std::uint64_t> Win32FileSystem::FreeSpace(const std::wstring& folder)
{
    const QuietDisk quiet;
    ULARGE_INTEGER bytes{};
    if (!GetDiskFreeSpaceExW(UnlimitedPath(folder).c_str(), &bytes, nullptr, nullptr)) return std::nullopt;
    return bytes.QuadPart;
}

std::wstring Win32FileSystem::WindowsDirectory()
{
    return DirectoryFrom(&GetWindowsDirectoryW);
}

std::wstring Win32FileSystem::SystemDirectory()
{
    return DirectoryFrom(&GetSystemDirectoryW);
}

std::wstring Win32FileSystem::TempDirectory()
{
    return DirectoryFrom([](wchar_t* path, UINT size) { return GetTempPathW(size, path); });
}

}  // namespace sylvex
