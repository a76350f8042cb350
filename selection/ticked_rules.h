#pragma once

#include "selection/path_rules.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// What the ticks of the tree mean, as the smallest set of rules. With `recursive` ticks one stands for its branch,
/// otherwise for the files right in a folder. `takesNew`: in a folder that is partly ticked, whatever it does not show
/// today is taken, too. A folder that the tree shows in two places is taken where either is ticked.
PathRules RulesOfTicks(const Context& context, FolderTree& tree, bool recursive, bool takesNew);

}  // namespace sylvex
