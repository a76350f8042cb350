#pragma once

#include <string>
#include <vector>

#include "platform/types.h"

namespace sylvex {

/// The tree's variables of one control, under the names that reports print.
struct TreeState {
    std::vector<std::wstring> SylvexFilter;  ///< the patterns of m_FileFilter, as they were when the roots were loaded
    std::wstring m_FileFilter;
    std::wstring m_MyDocs;
    bool InClear = false;  ///< all nodes are being removed: nothing opens or is ticked meanwhile
    /// The tree's window as it was last asked for, and what was measured in it for dragging.
    WindowHandle m_hwndTV = 0;
    int m_cxyAutoScroll = 0;
    Size m_szDrag;
};

}  // namespace sylvex
