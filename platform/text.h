#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/regional.h"

namespace sylvex {

/// Equal as text, without regard to letter case.
bool EqualText(Regional& regional, std::wstring_view left, std::wstring_view right);
/// The same name on disk: letter by letter, without regard to letter case.
bool EqualName(Regional& regional, std::wstring_view left, std::wstring_view right);
/// Lower case by the user's rules; plain ASCII needs no service.
std::wstring LowerText(Regional& regional, std::wstring_view text);
/// The parts between separators; nothing for an empty text.
std::vector<std::wstring> SplitText(std::wstring_view text, wchar_t separator);
/// Whether one of a path's names ends in a full stop or a blank. The platform leaves those out of plain paths, and
/// means another file then; "." and ".." are no such names.
bool LosesAnEnding(std::wstring_view path);

}  // namespace sylvex
