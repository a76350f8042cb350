#pragma once

#include <optional>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// The mouse and the keyboard over a native tree.
class TreeInput {
public:
    explicit TreeInput(TreeCore& core) : m_core(core) {}
    /// The answer, or nothing for a message that goes on to the tree as it is.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnClick();
    /// The row goes.
    void Forget(HTREEITEM item);
    /// Whether what the mouse did since the click on the label means that no edit of it is wanted.
    bool SpoilsEditing() const;

private:
    struct Press {
        HTREEITEM item = nullptr;
        HTREEITEM caret = nullptr;  // the selected row before
        UINT flags = 0;
        bool OnBox() const { return (flags & TVHT_ONITEMSTATEICON) != 0; }
    };

    std::optional<LRESULT> OnMouse(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnKey(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnPressed(short button, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnReleased(short button, UINT message, WPARAM wParam, LPARAM lParam);
    void PressNative(short button, UINT message, WPARAM wParam, LPARAM lParam);
    bool TellRelease(short button, WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyDown(UINT message, WPARAM wParam, LPARAM lParam);
    bool DoKey(short key);
    bool DoExpanding(short key, HTREEITEM row);
    LRESULT OnChar(WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyUp(UINT message, WPARAM wParam, LPARAM lParam);
    Press PressAt(LPARAM where);
    bool IsDrag(Point here) const;
    void Hold();
    void LetGo();

    TreeCore& m_core;
    Press m_press;  // the last one of the left button
    Point m_pressedAt;
    bool m_dragged = false;   // the pointer has gone further since than a click does
    short m_down = 0;         // the buttons whose release is still to be told
    bool m_captured = false;  // the capture was taken here
    bool m_captureMoved = false;
    bool m_boxPressed = false;  // since the tree itself saw a press
    wchar_t m_command = 0;      // the character that the key pressed last sends, when it is a command
};

}  // namespace sylvex
