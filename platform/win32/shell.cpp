#include "platform/win32/shell.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <vector>

#include "platform/win32/filesystem.h"
#include "platform/win32/handles.h"

namespace sylvex {
namespace {

struct ListFreer {
    void operator()(ITEMIDLIST* list) const noexcept { CoTaskMemFree(list); }
};

// What the shell knows of a path; 0 when nothing. The shell cannot look at a path too long for its records,
// and answers for the type alone then.
DWORD_PTR Ask(const std::wstring& path, UINT flags, SHFILEINFOW& answer)
{
    const QuietDisk quiet;
    if (path.size() < MAX_PATH) return SHGetFileInfoW(path.c_str(), 0, &answer, sizeof answer, flags);
    const auto name = path.substr(path.find_last_of(L"\\/") + 1);
    return SHGetFileInfoW(name.c_str(), FILE_ATTRIBUTE_NORMAL, &answer, sizeof answer, flags | SHGFI_USEFILEATTRIBUTES);
}

std::wstring InSystemFolder(const std::wstring& module)
{
    if (module.find_first_of(L"\\/:") != std::wstring::npos) return {};
    return Win32FileSystem().SystemDirectory() + L"\\" + module;
}

/// The shell's own module numbers its icons from 1; by number they are found also where others stand before them.
HICON ShellIcon(int number)
{
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(L"shell32.dll"), MAKEINTRESOURCEW(number), IMAGE_ICON,
                                         GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), 0));
}

}  // namespace

std::wstring Win32Shell::DisplayName(const std::wstring& path)
{
    SHFILEINFOW answer{};
    return Ask(path, SHGFI_DISPLAYNAME, answer) ? answer.szDisplayName : std::wstring();
}

OwnedIcon Win32Shell::FileIcon(const std::wstring& path)
{
    SHFILEINFOW answer{};
    if (!Ask(path, SHGFI_ICON | SHGFI_SMALLICON, answer)) return {};
    return {*this, NumberOf(answer.hIcon)};
}

OwnedIcon Win32Shell::IconInFile(const std::wstring& file, int index)
{
    const QuietDisk quiet;
    if (_wcsicmp(file.c_str(), L"Shell32.dll") == 0) {
        if (HICON small = ShellIcon(index + 1)) return {*this, NumberOf(small)};
    }
    HICON small = nullptr;
    if (ExtractIconExW(file.c_str(), index, nullptr, &small, 1) == 1 && small) return {*this, NumberOf(small)};
    auto* const large = ExtractIconW(OwnModule(), file.c_str(), static_cast<UINT>(index));
    // 1 says that the file is no module and no icon file.
    if (NumberOf(large) <= 1) return {};
    return {*this, NumberOf(large)};
}

void Win32Shell::DestroyIcon(IconHandle icon) noexcept
{
    ::DestroyIcon(HandleOf<HICON>(icon));
}

int Win32Shell::SystemIconIndex(const std::wstring& path)
{
    SHFILEINFOW answer{};
    return Ask(path, SHGFI_SYSICONINDEX | SHGFI_SMALLICON, answer) ? answer.iIcon : 0;
}

int Win32Shell::SystemIconIndexOfType(const std::wstring& name, std::uint32_t attributes)
{
    SHFILEINFOW answer{};
    // An empty attribute word would be read as the one of a path that has to be looked at.
    const auto kind = attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
    const auto found = SHGetFileInfoW(name.c_str(), kind, &answer, sizeof answer,
                                      SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES);
    return found ? answer.iIcon : 0;
}

ImageListHandle Win32Shell::SystemImageList(bool small)
{
    SHFILEINFOW answer{};
    // By type: the handle is the same for every path, and no disk is touched.
    return SHGetFileInfoW(L"x", FILE_ATTRIBUTE_NORMAL, &answer, sizeof answer,
                          SHGFI_SYSICONINDEX | SHGFI_USEFILEATTRIBUTES | (small ? SHGFI_SMALLICON : 0u));
}

std::wstring Win32Shell::SpecialFolder(int number)
{
    LPITEMIDLIST list = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, number, &list))) return {};
    const std::unique_ptr<ITEMIDLIST, ListFreer> owned(list);
    wchar_t path[MAX_PATH] = {};
    if (!SHGetPathFromIDListW(list, path)) return {};
    std::wstring folder(path);
    // Only the root of a drive keeps its separator, however the folder was registered.
    if (folder.size() > 3 && folder.back() == L'\\') folder.pop_back();
    return folder;
}

std::wstring Win32Shell::ResourceString(const std::wstring& module, unsigned id)
{
    const auto path = InSystemFolder(module);
    if (path.empty()) return {};
    const UniqueModule loaded(
        LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    if (!loaded) return {};
    wchar_t text[MAX_PATH] = {};
    const auto length = LoadStringW(loaded.get(), id, text, MAX_PATH);
    return {text, static_cast<std::size_t>(length > 0 ? length : 0)};
}

FileOperationResult Win32Shell::Operate(unsigned function, unsigned flags, const std::wstring& from,
                                        const std::wstring& to)
{
    // The shell reads lists of paths: each path ends in a NUL (the text's own), the list in another.
    auto sources = from;
    sources.push_back(L'\0');
    auto targets = to;
    targets.push_back(L'\0');
    SHFILEOPSTRUCTW operation{};
    operation.wFunc = function;
    operation.pFrom = sources.c_str();
    operation.pTo = targets.c_str();
    operation.fFlags = static_cast<FILEOP_FLAGS>(flags);
    FileOperationResult result;
    result.code = SHFileOperationW(&operation);
    result.aborted = operation.fAnyOperationsAborted != FALSE;
    // A cancel has codes of its own, older and newer, beside the flag.
    constexpr int kOldCancelled = 117;
    if (result.aborted && (result.code == ERROR_CANCELLED || result.code == kOldCancelled)) result.code = 0;
    return result;
}

int Win32Shell::MoveLink(const std::wstring& from, const std::wstring& to)
{
    auto* const opened = CreateFileW(UnlimitedPath(from).c_str(), DELETE | SYNCHRONIZE | FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return static_cast<int>(GetLastError());
    const std::unique_ptr<void, HandleCloser<&CloseHandle>> link(opened);
    // Some platforms open what the link points to all the same.
    FILE_ATTRIBUTE_TAG_INFO what{};
    if (!GetFileInformationByHandleEx(link.get(), FileAttributeTagInfo, &what, sizeof what) ||
        (what.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return ERROR_NOT_SUPPORTED;
    // Through this handle, so that nothing else can take the link's place meanwhile; within the volume, and over
    // nothing.
    const auto name = UnlimitedPath(to);
    std::vector<std::uint64_t> record((sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t)) / 8 + 1);
    auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(record.data());
    rename->FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
    name.copy(rename->FileName, name.size());
    const auto size = static_cast<DWORD>(record.size() * 8);
    return SetFileInformationByHandle(link.get(), FileRenameInfo, rename, size) ? 0 : static_cast<int>(GetLastError());
}

}  // namespace sylvex
