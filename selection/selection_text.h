#pragma once

#include <string>
#include <string_view>

#include "selection/path_rules.h"

namespace sylvex {

/// A selection as it is kept: what is taken, and what becomes of files that appear later in a folder that is partly
/// taken.
struct KeptSelection {
    PathRules rules;
    bool takesNew = false;
};

/// The selection as text, one rule a line, behind a line that tells the version:
///
///     sylvex-selection 1
///     new-entries 0
///     + C:\photos
///     - C:\photos\raw
///     +. C:\notes
///
/// "+" takes and "-" leaves out a path with all below it, "+." and "-." the files right in a folder. Lines end in a
/// line feed. Characters that a line or an encoding may lose (control characters, line ends, blanks at the ends of a
/// line, half surrogate pairs, "%") are written as %{XXXX}, by their number in hexadecimal: any name can stand in it.
std::wstring WriteSelection(const KeptSelection& selection);

/// Reads that text; lines may end in a carriage return too. Raises 321 for anything else, and tells the line.
KeptSelection ReadSelection(Regional& regional, std::wstring_view text);

}  // namespace sylvex
