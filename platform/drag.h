#pragma once

#include <functional>

#include "platform/types.h"

namespace sylvex {

/// What dragging in a window needs of the platform: the picture that follows the pointer, of which there is one at a
/// time, and the mouse. Points are relative to the window's outer corner, in pixels.
class Drag {
public:
    virtual ~Drag() = default;
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
    /// Sends all mouse input to the window until ReleaseCapture. Calls `lost`, at most once, when something else takes
    /// the mouse away or the window is destroyed; the end of a capture by the release of a button that the window goes
    /// on to tell of is no loss. `lost` must not throw, and may release.
    /// Calls `escape` when the Escape key goes down, whichever window of this thread has the focus; the key goes on to
    /// the window itself and to nobody else. `escape` must not throw either.
    virtual void SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape) = 0;
    /// Ends what SetCapture began; nothing without it.
    virtual void ReleaseCapture() noexcept = 0;
};

}  // namespace sylvex
