#pragma once

#include <optional>
#include <string>

#include "instance/instance.h"
#include "tree/folder_tree.h"
#include "tree/path_search.h"

namespace sylvex {

class MManipulateMsgBox;

/// Moves the tree's selection to a path.
class Navigation {
public:
    /// The arguments outlive the navigation.
    Navigation(Instance& instance, FolderTree& tree, MManipulateMsgBox& boxes);

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
    Node* StepDown(Node& pNode, const std::wstring& pText, Descent& descent, std::optional<TreeView::Updating>& hidden);
    void Show(Node& node);
    bool IsFolderRow(const std::wstring& typ) const;

    Instance& m_instance;
    FolderTree& m_tree;
    MManipulateMsgBox& m_boxes;
    PathSearch m_search;
};

/// Tells the user, over the window `owner`, that the path does not exist.
void TellNotPresent(MManipulateMsgBox& boxes, WindowHandle owner, const std::wstring& path);

}  // namespace sylvex
