#pragma once

#include <string_view>

namespace sylvex::host {

/// Writes to the standard output that the program was started with, or else to its parent's console. UTF-8 in files
/// and pipes. False when the text could not be written; nowhere to write to is no failure.
bool WriteOutput(std::wstring_view text);

/// The same for the standard error.
bool WriteError(std::wstring_view text);

/// Creates or replaces a file; throws std::system_error.
void WriteFileBytes(std::wstring_view name, std::string_view bytes);

}  // namespace sylvex::host
