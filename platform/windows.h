#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/listwindow.h"
#include "platform/treewindow.h"
#include "platform/types.h"

namespace sylvex {

/// A scroll bar's range and where it stands, in the window's own units.
struct ScrollBar {
    int least = 0;
    int most = 0;
    unsigned page = 0;  ///< how much of the range shows at a time
    int position = 0;
};

/// Where windows lie and what of them shows. What is asked of a window that is gone gives nothing.
class WindowPlaces {
public:
    virtual ~WindowPlaces() = default;
    /// The form that holds `window`; a form is its own.
    virtual WindowHandle TopLevelOf(WindowHandle window) = 0;
    /// The client area in its own pixels.
    virtual std::optional<Rect> ClientRect(WindowHandle window) = 0;
    /// The whole window on the screen.
    virtual std::optional<Rect> WindowRect(WindowHandle window) = 0;
    virtual std::optional<Point> ClientToScreen(WindowHandle window, Point client) = 0;
    /// The point itself for a window that is gone.
    virtual Point ScreenToClient(WindowHandle window, Point screen) = 0;
    /// `bar`: 0 the horizontal, 1 the vertical one.
    virtual std::optional<ScrollBar> GetScrollInfo(WindowHandle window, int bar) = 0;
    virtual int GetScrollPos(WindowHandle window, int bar) = 0;
    /// Paints at once what of the window waits for it.
    virtual void UpdateWindow(WindowHandle window) = 0;
};

/// Window services and the makers of the two kinds of window that the control works on.
class Windows : public WindowPlaces {
public:
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
