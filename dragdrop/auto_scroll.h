#pragma once

#include <memory>

#include "dragdrop/drag_owner.h"
#include "dragdrop/drag_state.h"
#include "tree/folder_tree.h"

namespace sylvex {

class DragTree;
struct TVHITTESTINFO;

/// What the tree does by itself under a drag: it scrolls while the pointer is near an edge, and opens a folder that the
/// pointer rests on. Its timers are off without a drag.
class AutoScroll {
public:
    /// The arguments outlive the object.
    AutoScroll(const Context& context, const FolderTree& folders, const DragState& state, DragTree& tree,
               DragOwner& owner);
    ~AutoScroll();

    /// A drag begins: no item has been met yet.
    void Begin() { m_lastItem = 0; }
    /// The pointer has moved; `hit` is what lies under it.
    void Moved(const TVHITTESTINFO& hit);
    void Stop();

private:
    void tmrAutoScroll_Timer();
    void tmrAutoExpand_Timer();
    /// One step; true when it scrolled.
    bool DoDragScroll(int nBar, unsigned uMsg, unsigned dwCmd);
    bool ScrollTowards(unsigned sides);
    void OpenUnderPointer(ItemHandle item);
    unsigned SidesInReach(Point client);
    /// Runs `body` with the drag picture hidden, which it shows again while the drag goes on.
    template <class Body>
    void WithoutPicture(Body&& body);

    const Context& m_context;
    const FolderTree& m_folders;
    const DragState& m_state;
    DragTree& m_tree;
    ItemHandle m_lastItem = 0;
    std::unique_ptr<Timer> tmrAutoScroll;
    std::unique_ptr<Timer> tmrAutoExpand;
};

}  // namespace sylvex
