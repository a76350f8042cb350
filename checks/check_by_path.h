#pragma once

#include <optional>
#include <string>

#include "instance/instance.h"
#include "tree/folder_tree.h"
#include "tree/path_search.h"

namespace sylvex {

class MManipulateMsgBox;

/// Ticks the node that a row of the bound list stands for.
class CheckByPath {
public:
    /// The arguments outlive the object; `events` handles each tick as a click.
    CheckByPath(Instance& instance, FolderTree& tree, TreeViewEvents& events, MManipulateMsgBox& boxes);

    /// Gives the node of the selected row the mark `bState`, opening folders on the way. `bBuildList`: the list is
    /// rebuilt. Without a selected row, and after an error, InSetNodeChecked keeps the opposite of `bBuildList`. Raises
    /// 91 when no list is bound, 9 for a path that is a drive alone.
    void SetNodeChecked(bool bState, bool bBuildList);
    /// Opens `pNode` and goes on towards `pText`. 0 when that was found or is looked for deeper down, otherwise 1, the
    /// user having been told.
    short DrillDownNodeCheck(Node& pNode, const std::wstring& pText, bool bState);

private:
    void CheckDrive(const std::vector<std::wstring>& parts, const std::wstring& Path, bool bState);
    ChildOnPath StepDown(Node& pNode, const std::wstring& pText, bool bState, Descent& descent,
                         std::optional<TreeView::Updating>& hidden);
    void Check(Node& node, bool bState);

    Instance& m_instance;
    TreeViewEvents& m_events;
    MManipulateMsgBox& m_boxes;
    PathSearch m_search;
};

}  // namespace sylvex
