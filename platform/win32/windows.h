#pragma once

#include "platform/windows.h"

namespace sylvex {

/// The windows of this process.
class Win32Windows : public Windows {
public:
    std::unique_ptr<TreeWindow> CreateTree(WindowHandle parent, TreeWindowListener& listener) override;
    std::unique_ptr<ListWindow> WrapList(WindowHandle list) override;
    bool Exists(WindowHandle window) override;
    std::intptr_t Send(WindowHandle window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::uint32_t Style(WindowHandle window) override;
    void SetStyle(WindowHandle window, std::uint32_t style) override;
    WindowHandle TopLevelOf(WindowHandle window) override;
    std::optional<Rect> ClientRect(WindowHandle window) override;
    std::optional<Rect> WindowRect(WindowHandle window) override;
    std::optional<Point> ClientToScreen(WindowHandle window, Point client) override;
    Point ScreenToClient(WindowHandle window, Point screen) override;
    std::optional<ScrollBar> GetScrollInfo(WindowHandle window, int bar) override;
    int GetScrollPos(WindowHandle window, int bar) override;
    void UpdateWindow(WindowHandle window) override;
};

}  // namespace sylvex
