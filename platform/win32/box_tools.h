#pragma once

#include "platform/box_tools.h"

namespace sylvex {

/// The message boxes and owner windows of the calling thread.
class Win32BoxTools : public BoxTools {
public:
    std::unique_ptr<OwnerTimer> Arm(WindowHandle owner, unsigned identifier, int milliseconds,
                                    std::function<void()> tick) override;
    void RestoreOwner(WindowHandle owner) override;
    WindowHandle FindBox(WindowHandle owner, const std::wstring& caption) override;
    Rect PlaceOf(WindowHandle window) override;
    Rect WorkArea(WindowHandle window) override;
    void MoveBox(WindowHandle box, Point corner) override;
    std::unique_ptr<BoxCheck> AddCheck(WindowHandle box, const std::wstring& text) override;
};

}  // namespace sylvex
