#pragma once

#include "diagnostics/trap.h"
#include "platform/tree_records.h"
#include "platform/windows.h"

namespace sylvex {

/// The tree window's own messages, one wrapper each, named after the platform's macros. Each sends exactly one message,
/// or calls one other wrapper; a failed message yields 0 or false.
class TreeMessages {
public:
    /// `module` is the one whose procedures these are in error reports.
    TreeMessages(const Module& module, Windows& windows) : m_module(module), m_windows(windows) {}

    /// `Flag`: 1 close, 2 open, 3 toggle.
    bool TreeView_Expand(WindowHandle hWnd, ItemHandle hItem, unsigned Flag);
    /// The item's rectangle in client pixels, its label's only when `fItemRect`; false while the item is not shown.
    bool TreeView_GetItemRect(WindowHandle hWnd, ItemHandle hItem, Rect& prc, bool fItemRect);
    ItemHandle TreeView_GetNextItem(WindowHandle hWnd, ItemHandle hItem, unsigned Flag);
    ItemHandle TreeView_GetParent(WindowHandle hWnd, ItemHandle hItem);
    /// Stays although nothing of ours calls it, as the others may be named in reports.
    ItemHandle TreeView_GetDropHilight(WindowHandle hWnd);
    ItemHandle TreeView_GetRoot(WindowHandle hWnd);
    bool TreeView_Select(WindowHandle hWnd, ItemHandle hItem, unsigned code);
    /// Item 0 takes the highlight away.
    bool TreeView_SelectDropTarget(WindowHandle hWnd, ItemHandle hItem);
    bool TreeView_GetItem(WindowHandle hWnd, TVITEM& pItem);
    bool TreeView_SetItem(WindowHandle hWnd, TVITEM& pItem);
    /// Fills in the flags and the item at `lpht.pt` (client pixels), which it also gives.
    ItemHandle TreeView_HitTest(WindowHandle hWnd, TVHITTESTINFO& lpht);
    /// An image list with the item's icon and label, which the caller destroys; 0 on failure.
    ImageListHandle TreeView_CreateDragImage(WindowHandle hWnd, ItemHandle hItem);

private:
    std::intptr_t Send(WindowHandle hWnd, unsigned message, std::uintptr_t wParam, ItemHandle item);
    std::intptr_t SendRecord(WindowHandle hWnd, unsigned message, std::uintptr_t wParam, void* record);

    const Module& m_module;
    Windows& m_windows;
};

}  // namespace sylvex
