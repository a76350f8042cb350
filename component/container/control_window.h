#pragma once

#include <windows.h>

#include "platform/types.h"

namespace sylvex {

/// What the control's window tells its owner, all on the window's thread. None may throw.
class ControlWindowOwner {
public:
    virtual ~ControlWindowOwner() = default;
    /// Inner size in pixels.
    virtual void Resized(Size size) = 0;
    virtual void EraseBackground(HDC device, const RECT& place) = 0;
    /// Any other message; true: it has been handled, and `result` is its answer.
    virtual bool Message(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) = 0;
    /// The window is being destroyed from outside (its parent goes); its children still exist.
    virtual void Destroying() = 0;
    /// One call of Defer(), when no call of a window is under way any more that was then. Neither owner nor window is
    /// touched behind this, so it may end both.
    virtual void Deferred() = 0;
};

/// The window that the tree lives in: hidden and without a parent, or a visible child of a container's window.
class ControlWindow {
public:
    /// Makes the window, hidden; throws ComError. The owner outlives it.
    explicit ControlWindow(ControlWindowOwner& owner);
    ~ControlWindow();
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    /// Null once it has been destroyed from outside.
    HWND Handle() const { return m_window; }
    /// Makes it anew, hidden and in its last size, after it was destroyed from outside; nothing otherwise. Throws
    /// ComError.
    void Ensure();
    /// Makes it a visible child of `parent`, at a place in pixels of the parent's client area. Throws ComError.
    void Attach(HWND parent, const RECT& place);
    /// Hides it and takes it out of its parent.
    void Detach();
    /// Pixels of the parent's client area.
    void Move(const RECT& place);
    void Resize(Size size);
    Size InnerSize() const;
    /// Calls the owner's Deferred() from the message loop. False when there is no window to wait with.
    bool Defer();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT DoDeferred();
    void Lost();

    ControlWindowOwner& m_owner;
    HWND m_window = nullptr;
    Size m_size;
    int m_deferred = 0;
};

}  // namespace sylvex
