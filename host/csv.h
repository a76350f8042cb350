#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sylvex::host {

/// Rows of cells; the first row is the header.
using Table = std::vector<std::vector<std::wstring>>;

/// The table as comma-separated values after RFC 4180: every row ends in CR LF, and cells with commas, quotes or line
/// breaks are quoted. A cell that a spreadsheet would take for a formula (=, +, -, @, their wide forms or a control
/// character comes first, as in the extension of a file) gets an apostrophe in front, which makes it a text.
std::wstring CsvText(const Table& table);

/// UTF-8 of a text in the platform's wide encoding; an unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

}  // namespace sylvex::host
