#pragma once

#include "diagnostics/trap.h"
#include "platform/windows.h"

namespace sylvex {

/// The tree window's own messages, one wrapper each, named after the platform's macros. A failed message yields 0 or
/// false.
class TreeMessages {
public:
    /// `module` is the one whose procedures these are in error reports.
    TreeMessages(const Module& module, Windows& windows) : m_module(module), m_windows(windows) {}

    ItemHandle TreeView_GetNextItem(WindowHandle hWnd, ItemHandle hItem, unsigned Flag);
    ItemHandle TreeView_GetRoot(WindowHandle hWnd);
    /// The item's rectangle in client pixels, its label's only when `fItemRect`; false while the item is not shown.
    bool TreeView_GetItemRect(WindowHandle hWnd, ItemHandle hItem, Rect& prc, bool fItemRect);

private:
    const Module& m_module;
    Windows& m_windows;
};

}  // namespace sylvex
