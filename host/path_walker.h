#pragma once

#include "host/com.h"
#include "host/options.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

/// A path that the tree does not have.
class PathNotFound : public std::exception {
public:
    explicit PathNotFound(std::wstring message) : m_message(std::move(message)) {}
    const char* what() const noexcept override { return "not in the tree"; }
    const std::wstring& Message() const { return m_message; }

private:
    std::wstring m_message;
};

/// Goes down the tree from My Computer through a drive, expanding on the way. Every member throws PathNotFound or
/// AutomationError; the control must outlive the walker.
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
