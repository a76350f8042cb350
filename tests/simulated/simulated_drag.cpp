#include "tests/simulated/simulated_drag.h"

#include <utility>

namespace sylvex {

SimulatedDrag::SimulatedDrag(CallGate& gate, SimulatedWindows& windows) : m_gate(gate), m_windows(windows)
{
    m_windows.WhenDestroyed([this](WindowHandle window) {
        if (window == m_captured) LoseCapture();
    });
}

std::string SimulatedDrag::Face() const
{
    if (m_picture.empty()) return {};
    const auto text = [](Point point) { return std::to_string(point.x) + "," + std::to_string(point.y); };
    return m_picture + " held at " + text(m_hotSpot) + (m_shown ? " shown at " + text(m_where) : " hidden");
}

void SimulatedDrag::LoseCapture()
{
    m_captured = 0;
    if (const auto lost = std::exchange(m_lost, nullptr)) lost();
}

void SimulatedDrag::PressEscape()
{
    if (const auto escape = std::exchange(m_escape, nullptr)) escape();
}

Size SimulatedDrag::PictureSize(ImageListHandle list)
{
    m_gate.Enter("Drag::PictureSize");
    return m_windows.ImageLists().PictureSize(list);
}

bool SimulatedDrag::BeginDrag(ImageListHandle list, int picture, Point hotSpot)
{
    m_gate.Enter("Drag::BeginDrag");
    if (!m_picture.empty()) return false;
    m_picture = m_windows.ImageLists().Picture(list, picture);
    m_hotSpot = hotSpot;
    return !m_picture.empty();
}

void SimulatedDrag::DragEnter(WindowHandle window, Point where)
{
    m_gate.Enter("Drag::DragEnter");
    m_where = where;
    m_shown = m_windows.TreeOf(window) != nullptr;
}

void SimulatedDrag::DragMove(Point where)
{
    m_gate.Enter("Drag::DragMove");
    m_where = where;
}

void SimulatedDrag::DragLeave(WindowHandle) noexcept
{
    m_shown = false;
}

void SimulatedDrag::DragShowNolock(bool show)
{
    m_gate.Enter("Drag::DragShowNolock");
    m_shown = show;
}

void SimulatedDrag::EndDrag() noexcept
{
    m_picture.clear();
    m_shown = false;
}

void SimulatedDrag::SetCapture(WindowHandle window, std::function<void()> lost, std::function<void()> escape)
{
    m_gate.Enter("Drag::SetCapture");
    if (m_windows.TreeOf(window) == nullptr) return;
    m_captured = window;
    m_lost = std::move(lost);
    m_escape = std::move(escape);
}

void SimulatedDrag::ReleaseCapture() noexcept
{
    m_captured = 0;
    m_lost = m_escape = nullptr;
}

}  // namespace sylvex
