#pragma once

#include <string>

#include "filelist/file_list.h"
#include "navigation/navigation_state.h"
#include "navigation/path_search.h"
#include "navigation/way_down.h"

namespace sylvex {

/// Ticks the node that a row of the bound list stands for.
class CheckByPath {
public:
    /// The arguments outlive the object; `events` handles each tick as a click.
    CheckByPath(const Context& context, FolderTree& tree, const FileList& list, TreeViewEvents& events,
                MManipulateMsgBox& boxes, NavigationState& state);

    /// Gives the node of the selected row the mark `bState`, opening folders on the way. `bBuildList`: the list is
    /// rebuilt. Without a selected row, and after an error, InSetNodeChecked keeps the opposite of `bBuildList`. Raises
    /// 91 when no list is bound, 9 for a path that is a drive alone.
    void SetNodeChecked(bool bState, bool bBuildList);
    /// Opens `pNode` and goes on towards `pText`. 0 when that was found or is looked for deeper down, otherwise 1, the
    /// user having been told.
    short DrillDownNodeCheck(Node& pNode, const std::wstring& pText, bool bState);

private:
    void CheckDrive(const std::vector<std::wstring>& parts, const std::wstring& Path, bool bState);
    ChildOnPath StepDown(Node& pNode, const std::wstring& pText, bool bState, WayDown& way);
    void Check(Node& node, bool bState);

    const Context& m_context;
    FolderTree& m_tree;
    const FileList& m_list;
    TreeViewEvents& m_events;
    MManipulateMsgBox& m_boxes;
    NavigationState& m_state;
    PathSearch m_search;
};

}  // namespace sylvex
