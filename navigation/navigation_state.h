#pragma once

#include <string>

namespace sylvex {

/// The variables of one control that its ways to a path use, under the names that reports print.
struct NavigationState {
    std::wstring m_Path;
    bool InSetNodeChecked = false;  ///< a row's node is being ticked, and the list is not to be rebuilt for it
};

}  // namespace sylvex
