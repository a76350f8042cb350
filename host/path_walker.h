#pragma once

#include "com/pointer.h"
#include "host/options.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

/// The tree of a control; throws AutomationError.
ComPtr<ITreeView> TreeOf(_Sylvex& control);

/// Goes down the tree from My Computer through a drive, expanding on the way. The control must
/// outlive the walker. Every member throws AutomationError, and Failure when the tree does not have the path.
class PathWalker {
public:
    explicit PathWalker(_Sylvex& control) : m_control(control) {}

    /// Node of a path, with its parents expanded.
    ComPtr<INode> Find(const TreePath& path) const;
    /// Selects the node of a path, expands it when it is a folder, and scrolls to it.
    void Open(const TreePath& path) const;
    /// Ticks the node of a path, as a click on its box does.
    void Tick(const TreePath& path) const;

private:
    _Sylvex& m_control;
};

}  // namespace sylvex::host
