#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/types.h"

namespace sylvex {

/// A timer of a window; the destructor kills it.
class OwnerTimer {
public:
    virtual ~OwnerTimer() = default;
};

/// A check box that was added to an open message box.
class BoxCheck {
public:
    virtual ~BoxCheck() = default;
    virtual WindowHandle Handle() const = 0;
    /// Its present state; once the box has closed, the one it closed with.
    virtual bool Ticked() = 0;
};

/// Work on a message box while it is open, for timers that run inside the box's own loop. A window that is gone is no
/// error: what concerns it does nothing, its place is empty.
class BoxTools {
public:
    virtual ~BoxTools() = default;
    /// Sets the timer `identifier` of `owner` (0: of the thread), in milliseconds. The tick may destroy the timer and
    /// must not throw. A timer that replaces another of the same window and identifier gives way to it when destroyed.
    virtual std::unique_ptr<OwnerTimer> Arm(WindowHandle owner, unsigned identifier, int milliseconds,
                                            std::function<void()> tick) = 0;
    /// Brings the form around `owner` back when it is minimised.
    virtual void RestoreOwner(WindowHandle owner) = 0;
    /// This thread's message box over `owner` with that caption, the one opened last; 0 for none.
    virtual WindowHandle FindBox(WindowHandle owner, const std::wstring& caption) = 0;
    /// Screen pixels.
    virtual Rect PlaceOf(WindowHandle window) = 0;
    /// What is free for windows on the screen that shows most of `window` (0: on the main one), in screen pixels.
    virtual Rect WorkArea(WindowHandle window) = 0;
    /// Moves the box's left top corner, in screen pixels.
    virtual void MoveBox(WindowHandle box, Point corner) = 0;
    /// Adds a check box below the box's buttons, which it follows in the order of the Tab key, and makes room for it.
    /// Null when the box has gone.
    virtual std::unique_ptr<BoxCheck> AddCheck(WindowHandle box, const std::wstring& text) = 0;
};

}  // namespace sylvex
