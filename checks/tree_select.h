#pragma once

#include <memory>

#include "checks/checks_state.h"
#include "diagnostics/dump.h"
#include "widgets/context.h"

namespace sylvex {

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
    /// `nCheck`: -1 checked, 0 unchecked, 1 mixed; any other value changes nothing at the first level.
    void TreeSetParents(Node& Node, long nCheck);
    /// True when the node and all its siblings are plain and in state `bCheck`.
    bool TreeCheckSibling(Node& Node, bool bCheck);

private:
    const Context& m_context;
    ChecksState& m_state;
    std::unique_ptr<Module> m_module;
};

/// True while an upward pass is under way, and after one that started at a root; the file list is not rebuilt then.
bool& InTreeSetParent();

/// The live control of this thread as reports show it: the one created last, nothing once any has been terminated.
Marker& m_Sylvex();

}  // namespace sylvex
