#pragma once

#include <string>

#include "platform/drag.h"
#include "tests/simulated/simulated_windows.h"

namespace sylvex {

/// Drags on the simulated desktop.
class SimulatedDrag final : public Drag {
public:
    SimulatedDrag(CallGate& gate, SimulatedWindows& windows);
    SimulatedDrag(const SimulatedDrag&) = delete;
    SimulatedDrag& operator=(const SimulatedDrag&) = delete;

    /// What follows the pointer: "" without a drag, otherwise such as "drag image of Shell32.dll,3 held at 5,4 shown at
    /// 30,40", or "... hidden".
    std::string Face() const;
    /// The window that has the capture, 0 for none.
    WindowHandle Captured() const { return m_captured; }
    /// Something else takes the mouse: another program, a message box.
    void LoseCapture();
    /// Escape is pressed in another window of the program.
    void PressEscape();

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
    CallGate& m_gate;
    SimulatedWindows& m_windows;
    std::string m_picture;
    Point m_hotSpot;
    Point m_where;
    bool m_shown = false;
    WindowHandle m_captured = 0;
    std::function<void()> m_lost;
    std::function<void()> m_escape;
};

}  // namespace sylvex
