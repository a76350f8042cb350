#include "bench/bench.h"

#include "platform/runtime_error.h"

namespace sylvex::bench {

namespace {

/// A folder that was made and finished before this program was started (scripts/bench.sh).
std::wstring Made(const std::wstring& name)
{
    std::wstring path = ScratchFolder() + L"\\" + name;
    if (GetFileAttributesW((path + L".made").c_str()) == INVALID_FILE_ATTRIBUTES)
        throw RuntimeError(76, path + L" has not been made");
    return path;
}

}  // namespace

std::wstring ScratchFolder()
{
    return L"C:\\SylvexBench";
}

std::wstring FlatFolder(int files)
{
    return Made(L"flat" + std::to_wstring(files));
}

std::wstring FolderOfFolders(int folders)
{
    return Made(L"folders" + std::to_wstring(folders));
}

std::wstring DeepFolder()
{
    return Made(L"deep100000");
}

}  // namespace sylvex::bench
