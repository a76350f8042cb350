#pragma once

#include <cstdint>
#include <memory>

#include "platform/listwindow.h"
#include "platform/treewindow.h"
#include "platform/types.h"

namespace sylvex {

/// Window services and the makers of the two kinds of window that the control works on.
class Windows {
public:
    virtual ~Windows() = default;
    /// A tree window below `parent`, hidden nothing: visible and empty. The listener outlives it. Raises 7 when the
    /// platform cannot make one.
    virtual std::unique_ptr<TreeWindow> CreateTree(WindowHandle parent, TreeWindowListener& listener) = 0;
    /// Wraps a list-view window of the host; null when the handle is no list-view window.
    virtual std::unique_ptr<ListWindow> WrapList(WindowHandle list) = 0;
    virtual bool Exists(WindowHandle window) = 0;
    /// Sends a message and gives its result; 0 for a window that is gone or another process's.
    virtual std::intptr_t Send(WindowHandle window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
    virtual std::uint32_t Style(WindowHandle window) = 0;
    virtual void SetStyle(WindowHandle window, std::uint32_t style) = 0;
};

}  // namespace sylvex
