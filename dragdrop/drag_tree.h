#pragma once

#include <cstdint>
#include <optional>

#include "dragdrop/drag_state.h"
#include "widgets/context.h"
#include "widgets/tree_messages.h"

namespace sylvex {

/// Sides of a window, combined.
enum Side : unsigned { kLeftSide = 1, kTopSide = 2, kRightSide = 4, kBottomSide = 8 };

/// Flags of a hit test: the parts of a row that a drag may start on, and that a folder opens under.
constexpr unsigned kHitGrip = 0x46;
constexpr unsigned kHitOpening = 0x56;

/// The control's tree as dragging sees it: native items and where they lie. The procedures with a window handle run
/// under the error trap.
class DragTree : public TreeMessages {
public:
    /// The arguments outlive the object.
    DragTree(const Context& context, const DragState& state)
        : TreeMessages(context.module, context.platform.windows), m_context(context), m_state(state)
    {
    }

    /// The tree's window, 0 while it has none.
    WindowHandle Window() const { return m_context.TV.hWnd(); }

    /// True when `hitemParent` lies above `hitemChild`, at any distance; an item is not above itself.
    bool AreTVItemsParentChild(WindowHandle hwndTV, ItemHandle hitemParent, ItemHandle hitemChild);
    bool IsTVItemCollapsedParent(WindowHandle hwndTV, ItemHandle hItem);
    /// The sides whose band, `cxyRegion` wide, the point lies in (bounds included); 0 outside the rectangle. Raises 6
    /// when a band's bound cannot be told.
    unsigned PtInRectRegion(const Rect& rc, int cxyRegion, Point pt);
    /// The sides towards which the window can still scroll. Raises 6 for a range that cannot be told.
    unsigned IsWindowScrollable(WindowHandle hWnd);
    /// The item's picture becomes `DragImage` (the first one without a node), or with `fSet` the one that the tree's
    /// owner is asked for.
    bool SetNodeCallbacks(WindowHandle hwndTV, ItemHandle hItem, Node* nod, bool fSet);
    /// Turns a client point into one relative to the window's outer corner; false when it cannot.
    bool ClientToWindow(WindowHandle hWnd, Point& pt);

    /// The pointer in the tree's client area.
    Point Pointer();
    TVHITTESTINFO HitAt(Point client);
    /// Shows the item (0: none) as the one that a drop would go to, as the rows lie now.
    void ShowDropTarget(ItemHandle item);
    /// A drag begins: no row has moved yet.
    void BeginLayout();
    /// Whether rows have been opened, closed or scrolled, or may have been, since that time (System::Now) or at it.
    bool RowsMovedSince(std::uint32_t time);

private:
    /// What tells that rows lie elsewhere than before.
    struct Layout {
        unsigned version = 0;
        int left = 0;
        int top = 0;
        bool operator==(const Layout&) const = default;
    };
    Layout LayoutNow();
    void NoteLayout();
    unsigned Scrollable(WindowHandle hWnd, int bar, std::uint32_t style, unsigned towardsLeast, unsigned towardsMost);
    const Context& m_context;
    const DragState& m_state;
    Layout m_layout;
    std::optional<std::uint32_t> m_moved;  // when, at the latest, rows were last moved
};

}  // namespace sylvex
