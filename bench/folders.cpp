#include <cstdio>

#include "bench/bench.h"

namespace sylvex::bench {

namespace {

bool Exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MakeFile(const std::wstring& path)
{
    CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

/// Makes a folder by `fill` unless an earlier run has; a mark beside it says that it was finished.
std::wstring Made(const std::wstring& name, const std::function<void(const std::wstring&)>& fill)
{
    const std::wstring path = ScratchFolder() + L"\\" + name;
    const std::wstring mark = ScratchFolder() + L"\\" + name + L".made";
    if (Exists(mark)) return path;
    std::fprintf(stderr, "making %ls\n", path.c_str());
    CreateDirectoryW(path.c_str(), nullptr);
    fill(path);
    MakeFile(mark);
    return path;
}

std::wstring Numbered(const wchar_t* stem, int number)
{
    wchar_t text[32];
    std::swprintf(text, 32, L"%ls%06d", stem, number);
    return text;
}

}  // namespace

std::wstring ScratchFolder()
{
    const std::wstring path = L"C:\\SylvexBench";
    CreateDirectoryW(path.c_str(), nullptr);
    return path;
}

std::wstring FlatFolder(int files, int extensions)
{
    return Made(L"flat" + std::to_wstring(files), [&](const std::wstring& path) {
        for (int i = 0; i < files; ++i)
            MakeFile(path + L"\\" + Numbered(L"file", i * 7919 % files) + L".x" + std::to_wstring(i % extensions));
    });
}

std::wstring FolderOfFolders(int folders)
{
    return Made(L"folders" + std::to_wstring(folders), [&](const std::wstring& path) {
        for (int i = 0; i < folders; ++i) {
            const std::wstring folder = path + L"\\" + Numbered(L"folder", i);
            CreateDirectoryW(folder.c_str(), nullptr);
            if (i % 2 == 0) CreateDirectoryW((folder + L"\\sub").c_str(), nullptr);
        }
    });
}

std::wstring DeepFolder(int levels, int perLevel)
{
    return Made(L"deep" + std::to_wstring(levels * perLevel), [&](const std::wstring& path) {
        std::wstring level = path;
        for (int depth = 0; depth < levels; ++depth) {
            for (int i = 0; i < perLevel; ++i)
                MakeFile(level + L"\\" + Numbered(L"f", i) + L".txt");
            level += L"\\d";
            CreateDirectoryW(level.c_str(), nullptr);
        }
    });
}

}  // namespace sylvex::bench
