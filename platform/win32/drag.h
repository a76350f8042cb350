#pragma once

#include <memory>

#include "platform/drag.h"

namespace sylvex {

/// The common controls' drag pictures, and the mouse over windows of this process.
class Win32Drag : public Drag {
public:
    ~Win32Drag() override;
    Size PictureSize(ImageListHandle list) override;
    bool BeginDrag(ImageListHandle list, int picture, Point hotSpot) override;
    void DragEnter(WindowHandle window, Point where) override;
    void DragMove(Point where) override;
    void DragLeave(WindowHandle window) noexcept override;
    void DragShowNolock(bool show) override;
    void EndDrag() noexcept override;
    void SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape) override;
    void ReleaseCapture() noexcept override;

private:
    class Capture;
    // Shared with its own message procedure, out of which it may be released.
    std::shared_ptr<Capture> m_capture;
};

}  // namespace sylvex
