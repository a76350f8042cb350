#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/box_tools.h"
#include "tests/simulated/call_gate.h"
#include "tests/simulated/simulated_windows.h"

namespace sylvex {

class SimulatedOwnerTimer;
class SimulatedBoxCheck;

/// Message boxes as windows: where they lie, the timers of their owners, and the user's hands at their check box. A box
/// opens 300 wide and 150 high in the left top corner of a screen of 1280 by 1024; a check box makes it 30 higher.
class SimulatedBoxTools final : public BoxTools {
public:
    SimulatedBoxTools(CallGate& gate, SimulatedWindows& windows) : m_gate(gate), m_windows(windows) {}

    /// Where a window of the host lies on the screen; at first it has no place.
    void Place(WindowHandle window, const Rect& place) { m_places[window] = place; }
    /// Lets every timer that is armed tick once, the oldest first.
    void TickTimers();
    /// Flips the check box of the box opened last, as a click does; false when it has none.
    bool ClickCheck();
    /// The text of that check box; nothing when there is none.
    std::optional<std::wstring> CheckText() const;
    /// The place of the box that is open, or of the one that was open last.
    const Rect& BoxPlace() const { return m_boxPlace; }
    /// What was armed and restored, in order, such as "timer 20483 every 0" and "restore".
    std::vector<std::string> TakeLines() { return std::exchange(m_lines, {}); }
    /// Timers not killed yet: above 0 when no box is open is a leak.
    int Timers() const { return static_cast<int>(m_timers.size()); }

    /// For SimulatedBoxes: a box opens and closes.
    void OpenBox(WindowHandle owner, const std::wstring& caption);
    void CloseBox();

    std::unique_ptr<OwnerTimer> Arm(WindowHandle owner, unsigned identifier, int milliseconds,
                                    std::function<void()> tick) override;
    void RestoreOwner(WindowHandle owner) override;
    WindowHandle FindBox(WindowHandle owner, const std::wstring& caption) override;
    Rect PlaceOf(WindowHandle window) override;
    Rect WorkArea(WindowHandle window) override;
    void MoveBox(WindowHandle box, Point corner) override;
    std::unique_ptr<BoxCheck> AddCheck(WindowHandle box, const std::wstring& text) override;

private:
    friend class SimulatedOwnerTimer;
    friend class SimulatedBoxCheck;
    struct Box {
        WindowHandle handle = 0;
        WindowHandle owner = 0;
        std::wstring caption;
        Rect place;
        SimulatedBoxCheck* check = nullptr;
    };
    Box* Find(WindowHandle box);

    CallGate& m_gate;
    SimulatedWindows& m_windows;
    std::map<WindowHandle, Rect> m_places;
    Rect m_area{0, 0, 1280, 1024};
    Rect m_boxPlace;
    std::vector<Box> m_open;
    std::vector<SimulatedOwnerTimer*> m_timers;
    std::vector<std::string> m_lines;
};

}  // namespace sylvex
