#pragma once

#include <string>

#include "selection/path_rules.h"

namespace sylvex {

// A selection in the words of other programs. What such a program has no words for raises 321 and tells the path: never
// is a rule written that selects something else. The rules are minimal ones (PathRules::Minimise).

/// Filter rules for rsync ("--filter=merge FILE") with `root` as the source, whose separator at the end may be left
/// out. Anything taken outside of the root has no words.
std::wstring RsyncRules(const PathRules& rules, const std::wstring& root);

/// An ignore file for git at `root`: what is not taken is ignored.
std::wstring GitIgnoreRules(const PathRules& rules, const std::wstring& root);

/// A command file for the platform's robocopy: copies what is taken below the folder that is its argument, each path
/// under the name of its drive or server. Whole folders from which only the files right in it are left out have no
/// words.
std::wstring RobocopyCommands(const PathRules& rules);

}  // namespace sylvex
