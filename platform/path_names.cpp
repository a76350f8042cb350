#include "platform/path_names.h"

#include <algorithm>
#include <type_traits>

namespace sylvex {

namespace {

bool IsLetter(wchar_t character)
{
    return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
}

bool HasDrive(std::wstring_view path)
{
    return path.size() >= 3 && IsLetter(path[0]) && path[1] == L':' && path[2] == L'\\';
}

}  // namespace

bool IsRoot(std::wstring_view path)
{
    return HasDrive(path) && path.size() == 3;
}

bool IsShare(std::wstring_view path)
{
    if (!path.starts_with(L"\\\\")) return false;
    if (path.ends_with(L'\\')) path.remove_suffix(1);
    return std::count(path.begin(), path.end(), L'\\') == 3;
}

bool IsFileName(std::wstring_view text)
{
    const auto taken = [](wchar_t character) {
        const auto code = static_cast<std::make_unsigned_t<wchar_t>>(character);
        return code < 0x20 || code == 0x7F ||
               std::wstring_view(L"\\/:*?\"<>|").find(character) != std::wstring_view::npos;
    };
    return text.find_first_not_of(L". ") != std::wstring_view::npos && std::none_of(text.begin(), text.end(), taken);
}

bool IsWholePath(const std::wstring& path)
{
    const bool onShare = path.starts_with(L"\\\\");
    if (!onShare && !HasDrive(path)) return false;
    std::wstring_view rest = std::wstring_view(path).substr(onShare ? 2 : 3);
    if (rest.ends_with(L'\\')) rest.remove_suffix(1);
    int parts = 0;
    while (!rest.empty()) {
        const std::size_t end = rest.find(L'\\');
        if (!IsFileName(rest.substr(0, end))) return false;
        ++parts;
        rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
    }
    constexpr int kServerAndShare = 2;
    return !onShare || parts >= kServerAndShare;
}

std::wstring WithoutSeparator(const std::wstring& path)
{
    return path.ends_with(L'\\') && !IsRoot(path) ? path.substr(0, path.size() - 1) : path;
}

}  // namespace sylvex
