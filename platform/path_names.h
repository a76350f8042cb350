#pragma once

#include <string>
#include <string_view>

namespace sylvex {

// What paths of the platform look like. Nothing here asks the disk.

/// True for a drive's root with its separator.
bool IsRoot(std::wstring_view path);
/// True for a share itself, which has no entry of its own either.
bool IsShare(std::wstring_view path);
/// True for a path that names one place whatever the current folder is: from a drive or a share on, each part a name.
bool IsWholePath(const std::wstring& path);
/// The path without the separator at its end, which only a drive's root keeps.
std::wstring WithoutSeparator(const std::wstring& path);
/// True for a text that can be the name of a file: without characters that the disk gives a meaning to, and with
/// something beside full stops and blanks.
bool IsFileName(std::wstring_view text);

}  // namespace sylvex
