#pragma once

#include <string_view>

namespace sylvex::host {

/// Writes to the standard output that the program was started with, or else to its parent's console. UTF-8 in files
/// and pipes. Throws Failure when the text cannot be written; nowhere to write to is no failure.
void WriteOutput(std::wstring_view text);

/// Writes a message for the user to the standard error, in the same way; whether it arrives does not matter.
void WriteError(std::wstring_view message);

/// Creates or replaces a file; throws Failure.
void WriteFileBytes(const std::wstring& name, std::string_view bytes);

}  // namespace sylvex::host
