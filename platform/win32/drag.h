#pragma once

#include <memory>

#include "platform/drag.h"

namespace sylvex {

/// The common controls' drag pictures, and windows of this process.
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
    std::optional<Rect> ClientRect(WindowHandle window) override;
    std::optional<Rect> WindowRect(WindowHandle window) override;
    std::optional<Point> ClientToScreen(WindowHandle window, Point client) override;
    Point ScreenToClient(WindowHandle window, Point screen) override;
    std::optional<ScrollBar> GetScrollInfo(WindowHandle window, int bar) override;
    int GetScrollPos(WindowHandle window, int bar) override;
    void UpdateWindow(WindowHandle window) override;
    void SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape) override;
    void ReleaseCapture() noexcept override;

private:
    class Capture;
    // Shared with its own message procedure, out of which it may be released.
    std::shared_ptr<Capture> m_capture;
};

}  // namespace sylvex
