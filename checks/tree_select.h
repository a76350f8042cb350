#pragma once

#include <memory>

#include "checks/checks_state.h"
#include "diagnostics/dump.h"
#include "widgets/context.h"

namespace sylvex {

/// The state of a node's box, as reports number it.
enum class CheckState : long { Checked = -1, Unchecked = 0, Mixed = 1 };

/// True for a node that is ticked, or above one that is.
inline bool IsMarked(const Node& node)
{
    return node.Checked() || node.Bold();
}

/// The module modTreeSelect: how a tick spreads through the tree.
class TreeSelect {
public:
    /// The arguments outlive the object.
    TreeSelect(const Context& context, ChecksState& state);
    ~TreeSelect();

    /// Whether a tick stands for the whole branch below it, not for one folder.
    bool Recursive() const { return m_state.m_RecursiveCheck; }

    /// Applies the node's box to what is loaded below it and to its ancestors.
    void TreeSelectiveCheck(Node& Node, bool Recursive);
    void TreeSetChildren(Node& Node, bool bCheck, bool Recursive);
    /// Gives the state to the parent, and to those above it what follows from it.
    void TreeSetParents(Node& Node, CheckState state);
    /// True when the node and all its siblings are plain and in state `bCheck`.
    bool TreeCheckSibling(Node& Node, bool bCheck);

    /// Gives a folder that has lost a child, and those above it, the state that the others make.
    void LostChild(Node& folder);
    /// The same for the folder that the node has come to.
    void GainedChild(Node& moved);

private:
    void ClearEmptied(Node& folder);
    CheckState StateOfRow(Node& node);
    const Context& m_context;
    ChecksState& m_state;
    std::unique_ptr<Module> m_module;
};

/// True while an upward pass is under way, and after one that started at a root; the file list is not rebuilt then.
bool& InTreeSetParent();

/// The live control of this thread as reports show it: the one created last, nothing once any has been terminated.
Marker& m_Sylvex();

}  // namespace sylvex
