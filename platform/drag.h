#pragma once

#include <functional>
#include <optional>

#include "platform/types.h"

namespace sylvex {

/// A scroll bar's range and where it stands, in the window's own units.
struct ScrollBar {
    int least = 0;
    int most = 0;
    unsigned page = 0;  ///< how much of the range shows at a time
    int position = 0;
};

/// The picture that follows the pointer during a drag; there is one at a time. Points are relative to the window's
/// outer corner, in pixels.
class DragImages {
public:
    virtual ~DragImages() = default;
    /// The size of one picture of a list in pixels; empty when there is no such list.
    virtual Size PictureSize(ImageListHandle list) = 0;
    /// Starts with a picture (from 0) of a list, which stays the caller's; `hotSpot` is the pointer's place in it.
    /// False when the list has no such picture.
    virtual bool BeginDrag(ImageListHandle list, int picture, Point hotSpot) = 0;
    /// Shows the picture over a window and holds back that window's painting.
    virtual void DragEnter(WindowHandle window, Point where) = 0;
    virtual void DragMove(Point where) = 0;
    /// Hides the picture and lets the window paint; nothing for a window that is gone.
    virtual void DragLeave(WindowHandle window) noexcept = 0;
    /// Shows or hides the picture without holding back any painting.
    virtual void DragShowNolock(bool show) = 0;
    virtual void EndDrag() noexcept = 0;
};

/// Where windows lie and what of them shows, and the mouse capture. What is asked of a window that is gone gives
/// nothing.
class DragWindows {
public:
    virtual ~DragWindows() = default;
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
    /// Sends all mouse input to the window until ReleaseCapture. Calls `lost`, at most once, when something else takes
    /// the mouse away or the window is destroyed; the end of a capture by the release of a button that the window goes
    /// on to tell of is no loss. `lost` must not throw, and may release.
    /// Calls `escape` when the Escape key goes down, whichever window of this thread has the focus; the key goes on to
    /// the window itself and to nobody else. `escape` must not throw either.
    virtual void SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape) = 0;
    /// Ends what SetCapture began; nothing without it.
    virtual void ReleaseCapture() noexcept = 0;
};

/// What dragging in a window needs of the platform.
class Drag : public DragImages, public DragWindows {};

}  // namespace sylvex
