#include "tests/soak/census.h"

#include <windows.h>

#include "tests/component/hand_at_component.h"

namespace sylvex::test {

namespace {

constexpr char kFolder[] = "\\";

std::wstring Above(const std::wstring& path)
{
    return path.substr(0, path.rfind(L'\\'));
}

bool SameName(const std::wstring& one, const std::wstring& other)
{
    return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

Census::Census(const std::wstring& base)
{
    const auto contents = ContentsOf(base);
    std::map<std::wstring, std::string> marks;
    for (const auto& [path, bytes] : contents)
        if (path.ends_with(std::wstring(L"\\") + kMark)) marks[Above(path)] = bytes;
    top = marks[L""];
    for (const auto& [path, bytes] : contents) {
        const std::wstring name = path.substr(path.rfind(L'\\') + 1);
        if (name == kMark) continue;
        const bool isFolder = bytes == kFolder;
        const auto mark = marks.find(path);
        if (isFolder && mark == marks.end())
            odd += L"a folder without its mark: " + path + L"\n";
        else
            Add(isFolder ? mark->second : bytes, {marks[Above(path)], name, isFolder});
    }
}

void Census::Add(const std::string& known, Place place)
{
    const std::wstring name = place.name;
    if (!places.emplace(known, std::move(place)).second)
        odd += L"there twice: " + std::wstring(known.begin(), known.end()) + L" (" + name + L")\n";
}

std::wstring Census::PathOf(const std::string& known) const
{
    if (known == top) return {};
    const auto found = places.find(known);
    return found == places.end() ? L"?" : PathOf(found->second.folder) + L"\\" + found->second.name;
}

std::string Census::At(const std::wstring& path) const
{
    if (path.empty()) return top;
    const std::string folder = At(Above(path));
    for (const auto& [known, place] : places)
        if (place.folder == folder && SameName(place.name, path.substr(path.rfind(L'\\') + 1))) return known;
    return {};
}

std::map<std::wstring, std::string> Census::Shown(const std::string& folder) const
{
    std::map<std::wstring, std::string> shown;
    for (const auto& [known, place] : places)
        if (place.folder == folder && !place.name.starts_with(L'.')) shown[place.name] = known;
    return shown;
}

bool Census::IsFolder(const std::string& known) const
{
    const auto found = places.find(known);
    return known == top || (found != places.end() && found->second.isFolder);
}

bool Census::IsWithin(const std::string& known, const std::string& folder) const
{
    for (std::string at = known; at != folder;) {
        const auto found = places.find(at);
        if (found == places.end()) return false;
        at = found->second.folder;
    }
    return true;
}

std::wstring Difference(const Census& before, const Census& after)
{
    std::wstring lines;
    for (const auto& [known, place] : before.places) {
        const auto now = after.places.find(known);
        if (now == after.places.end())
            lines += L"lost: " + before.PathOf(known) + L"\n";
        else if (now->second != place)
            lines += before.PathOf(known) + L" is now " + after.PathOf(known) + L"\n";
    }
    for (const auto& [known, place] : after.places)
        if (!before.places.contains(known)) lines += L"new: " + after.PathOf(known) + L"\n";
    return lines + after.odd;
}

}  // namespace sylvex::test
