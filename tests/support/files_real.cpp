#include <windows.h>

#include <stdexcept>

#include "tests/support/files_real.h"

namespace sylvex {

namespace {

std::string BytesOf(const std::wstring& path)
{
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "?";
    char bytes[256];
    DWORD read = 0;
    ReadFile(file, bytes, sizeof bytes, &read, nullptr);
    CloseHandle(file);
    return {bytes, read};
}

void AddContents(const std::wstring& folder, const std::wstring& below, std::map<std::wstring, std::string>& contents)
{
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((Extended(folder + below) + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") continue;
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const std::wstring path = below + L"\\" + name;
        contents[path] = isFolder ? "\\" : BytesOf(folder + path);
        if (isFolder) AddContents(folder, path, contents);
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
}

}  // namespace

std::wstring Extended(const std::wstring& path)
{
    return L"\\\\?\\" + path;
}

void MakeBranch(const std::wstring& folder)
{
    for (std::size_t at = folder.find(L'\\', 3); at != std::wstring::npos; at = folder.find(L'\\', at + 1))
        CreateDirectoryW(Extended(folder.substr(0, at)).c_str(), nullptr);
    CreateDirectoryW(Extended(folder).c_str(), nullptr);
}

void WriteBytes(const std::wstring& path, const std::string& bytes, std::uint64_t size)
{
    MakeBranch(path.substr(0, path.rfind(L'\\')));
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("a test file could not be made");
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (size > written) {
        LARGE_INTEGER end;
        end.QuadPart = static_cast<LONGLONG>(size);
        SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
        SetEndOfFile(file);
    }
    CloseHandle(file);
}

std::map<std::wstring, std::string> ContentsOf(const std::wstring& folder)
{
    std::map<std::wstring, std::string> contents;
    AddContents(folder, L"", contents);
    return contents;
}

void RemoveBranch(const std::wstring& path)
{
    auto contents = ContentsOf(path);
    contents.emplace(L"", "\\");
    // What is below comes after its folder.
    for (auto entry = contents.rbegin(); entry != contents.rend(); ++entry) {
        const std::wstring each = Extended(path + entry->first);
        SetFileAttributesW(each.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!DeleteFileW(each.c_str())) RemoveDirectoryW(each.c_str());
    }
}

}  // namespace sylvex
