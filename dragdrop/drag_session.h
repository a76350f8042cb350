#pragma once

#include <memory>
#include <utility>

#include "dragdrop/auto_scroll.h"
#include "dragdrop/drag_owner.h"
#include "dragdrop/drag_state.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// A drag of a node with the mouse, from the press to the release: idle, pressed on a node, dragging. Its state is
/// that of dragging.
class DragSession {
public:
    /// The arguments outlive the session.
    DragSession(const Context& context, FolderTree& folders, DragState& state, DragOwner& owner);
    ~DragSession();
    DragSession(const DragSession&) = delete;
    DragSession& operator=(const DragSession&) = delete;

    bool Dragging() const { return m_state.m_himlDrag != 0; }
    /// The node that is being dragged; null when it is gone or was put elsewhere meanwhile.
    Node* Dragged() const;
    /// A press in the tree, in client pixels: notes what a drag would begin with.
    void Pressed(short Button, Point where);
    /// A move with these buttons held: begins the drag or carries it on.
    void Moved(short Button);
    /// A release without a drag: nothing is pressed any more.
    void Released();
    /// Ends the picture, the capture and the timers; nothing without a drag.
    void EndDrag1();
    /// The node that a release at `where` (client pixels) drops on: the one that is highlighted, if it lies there, and
    /// the rows have not moved since the button was let go; otherwise null.
    Node* TargetAt(Point where);
    /// Escape has been pressed: ends a drag under way, as Cancel does.
    void Escape() noexcept;
    /// True once after each Escape that ended a drag.
    bool TakeEscape() { return std::exchange(m_escaped, false); }
    /// Takes the drop highlight away and forgets what was dragged.
    void EndDrag2();
    /// Ends a drag under way without a drop.
    void Cancel() noexcept;
    /// While set, a press begins nothing: a drop is being carried out.
    void SetBusy(bool busy) { m_busy = busy; }
    DragTree& Tree() { return *m_tree; }

private:
    void BeginDrag();
    void DoDrag();
    bool PastThreshold(Point pointer) const;
    ImageListHandle PictureOf(ItemHandle item);
    void Hold(Point ptBtnDown);

    const Context& m_context;
    FolderTree& m_folders;
    DragState& m_state;
    DragOwner& m_owner;
    std::unique_ptr<DragTree> m_tree;
    AutoScroll m_autoScroll;
    bool m_busy = false;
    bool m_escaped = false;
};

}  // namespace sylvex
