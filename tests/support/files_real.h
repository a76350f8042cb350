#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace sylvex {

/// The path in the form that may be longer than the shell takes.
std::wstring Extended(const std::wstring& path);
/// Makes a folder, and those above it.
void MakeBranch(const std::wstring& folder);
/// Makes a file that begins with these bytes and is at least `size` long, and the folders above it.
void WriteBytes(const std::wstring& path, const std::string& bytes, std::uint64_t size = 0);
/// What lies below a folder: names relative to it with the files' first bytes, and folders with "\". A file that cannot
/// be read has "?".
std::map<std::wstring, std::string> ContentsOf(const std::wstring& folder);
/// Removes a file, or a folder with all in it.
void RemoveBranch(const std::wstring& path);

}  // namespace sylvex
