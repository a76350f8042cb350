#pragma once

#include <string>

#include "filelist/file_list.h"
#include "navigation/navigation_state.h"
#include "navigation/path_search.h"
#include "navigation/way_down.h"

namespace sylvex {

/// Moves the tree's selection to a path.
class Navigation {
public:
    /// The arguments outlive the navigation.
    Navigation(const Context& context, FolderTree& tree, const FileList& list, MManipulateMsgBox& boxes,
               const NavigationState& state);

    /// True when a search for `sSource` finds an entry, whose facts `W32FD` then holds (but no names). A path that ends
    /// in a separator is never found, nor is one on a server that does not answer.
    bool FileExistsW32FD(const std::wstring& sSource, FileEntry& W32FD);
    /// Selects and shows the loaded node whose path is the current one; nothing when there is none.
    void SetNodeVisible();
    /// Selects the node of the row that is selected in the bound list, opening folders on the way. Raises 91 when no
    /// list is bound.
    void SetNode();
    /// Opens `pNode` and goes on towards `pText`; tells the user when it is not there.
    void DrillDownNode(Node& pNode, const std::wstring& pText);

private:
    Node* StepDown(Node& pNode, const std::wstring& pText, WayDown& way);
    void Show(Node& node);
    bool IsFolderRow(const std::wstring& typ) const;

    const Context& m_context;
    FolderTree& m_tree;
    const FileList& m_list;
    MManipulateMsgBox& m_boxes;
    const NavigationState& m_state;
    PathSearch m_search;
};

}  // namespace sylvex
