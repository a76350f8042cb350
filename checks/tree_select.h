#pragma once

#include <memory>

#include "instance/instance.h"

namespace sylvex {

/// The module modTreeSelect: how a tick spreads through the tree.
class TreeSelect {
public:
    explicit TreeSelect(Instance& instance);
    ~TreeSelect();

    /// Applies the node's box to what is loaded below it and to its ancestors.
    void TreeSelectiveCheck(Node& Node, bool Recursive);
    void TreeSetChildren(Node& Node, bool bCheck, bool Recursive);
    /// `nCheck`: -1 checked, 0 unchecked, 1 mixed; any other value changes nothing at the first level.
    void TreeSetParents(Node& Node, long nCheck);
    /// True when the node and all its siblings are plain and in state `bCheck`.
    bool TreeCheckSibling(Node& Node, bool bCheck);

private:
    Instance& m_instance;
    std::unique_ptr<Module> m_module;
};

/// True while an upward pass is under way, and after one that started at a root; the file list is not rebuilt then.
bool& InTreeSetParent();

/// The live control of this thread: the one created last, null once any has been terminated.
Instance*& m_Sylvex();

}  // namespace sylvex
