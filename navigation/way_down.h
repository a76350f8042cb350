#pragma once

#include <optional>
#include <string>

#include "navigation/path_search.h"
#include "widgets/context.h"

namespace sylvex {

class MManipulateMsgBox;

/// A way down the tree to a path, which opens one node after the other and is painted once, at its end.
class WayDown {
public:
    /// The window over which the user is told that the path is not there.
    enum class Owner { Tree, Form };
    /// To `pText`, as PathSearch::To takes it. The arguments outlive the way.
    WayDown(const Context& context, FolderTree& tree, MManipulateMsgBox& boxes, Owner owner, const std::wstring& pText);

    /// Opens the node and gives its child on the way, null when there is none and the user has been told. `line` is
    /// the statement in error reports, which goes on to 3.
    ChildOnPath Step(Node& pNode, int& line);

private:
    void TellNotPresent();

    const Context& m_context;
    MManipulateMsgBox& m_boxes;
    Owner m_owner;
    const std::wstring& m_pText;
    PathSearch m_search;
    Descent m_descent;
    std::optional<TreeView::Updating> m_hidden;
};

}  // namespace sylvex
