#include "tests/support/desk.h"

namespace sylvex {

std::wstring Desk::MakeFolder(const std::wstring& name)
{
    std::wstring path = PathOf(name);
    while (path.back() == L'\\')
        path.pop_back();
    MakeFolderAt(path);
    return path;
}

std::wstring Desk::MakeFile(const std::wstring& name, std::uint64_t size)
{
    const std::size_t slash = name.rfind(L'\\');
    if (slash != name.npos) MakeFolder(name.substr(0, slash));
    std::wstring path = PathOf(name);
    MakeFileAt(path, size);
    return path;
}

void Desk::Make(std::initializer_list<std::wstring> names)
{
    for (const std::wstring& name : names) {
        if (name.back() == L'\\') {
            MakeFolder(name);
        } else {
            MakeFile(name);
        }
    }
}

bool Desk::Has(const std::wstring& name)
{
    return Get().files.Search(PathOf(name)) != nullptr;
}

}  // namespace sylvex
