#include "dragdrop/drag_tree.h"

#include <limits>

namespace sylvex {

namespace {

constexpr std::uint32_t kHorizontalBar = 0x100000;
constexpr std::uint32_t kVerticalBar = 0x200000;

/// A result as the 32-bit number that it has to be.
int Narrowed(std::int64_t result)
{
    if (result < std::numeric_limits<std::int32_t>::min() || result > std::numeric_limits<std::int32_t>::max())
        throw RuntimeError(6, L"Overflow");
    return static_cast<int>(result);
}

std::int64_t Wide(int number)
{
    return number;
}

}  // namespace

bool DragTree::AreTVItemsParentChild(WindowHandle hwndTV, ItemHandle hitemParent, ItemHandle hitemChild)
{
    ItemHandle hItem = hitemChild;
    return Trapped(m_context.module, VARIABLES(hwndTV, hitemParent, hitemChild), VARIABLES(hItem), [&](int& line) {
        while (hItem != 0) {
            line = 2;
            hItem = TreeView_GetParent(hwndTV, hItem);
            if (hItem == hitemParent) return true;
        }
        return false;
    });
}

bool DragTree::IsTVItemCollapsedParent(WindowHandle hwndTV, ItemHandle hItem)
{
    TVITEM tvi;
    return Trapped(m_context.module, VARIABLES(hwndTV, hItem), VARIABLES(tvi), [&](int& line) {
        tvi.hItem = hItem;
        tvi.mask = TVIF_STATE | TVIF_CHILDREN;
        line = 2;
        return TreeView_GetItem(hwndTV, tvi) && tvi.cChildren != 0 && (tvi.state & TVIS_EXPANDED) == 0;
    });
}

unsigned DragTree::PtInRectRegion(const Rect& rc, int cxyRegion, Point pt)
{
    unsigned sides = 0;
    return Trapped(m_context.module, VARIABLES(rc, cxyRegion, pt), VARIABLES(sides), [&](int& line) {
        if (pt.x < rc.left || pt.x >= rc.right || pt.y < rc.top || pt.y >= rc.bottom) return sides;
        line = 2;
        if (pt.x <= Narrowed(Wide(rc.left) + cxyRegion)) sides |= kLeftSide;
        if (pt.x >= Narrowed(Wide(rc.right) - cxyRegion)) sides |= kRightSide;
        if (pt.y <= Narrowed(Wide(rc.top) + cxyRegion)) sides |= kTopSide;
        if (pt.y >= Narrowed(Wide(rc.bottom) - cxyRegion)) sides |= kBottomSide;
        return sides;
    });
}

unsigned DragTree::IsWindowScrollable(WindowHandle hWnd)
{
    unsigned sides = 0;
    return Trapped(m_context.module, VARIABLES(hWnd), VARIABLES(sides), [&](int& line) {
        sides |= Scrollable(hWnd, 0, kHorizontalBar, kLeftSide, kRightSide);
        line = 2;
        sides |= Scrollable(hWnd, 1, kVerticalBar, kTopSide, kBottomSide);
        return sides;
    });
}

unsigned DragTree::Scrollable(WindowHandle hWnd, int bar, std::uint32_t style, unsigned towardsLeast,
                              unsigned towardsMost)
{
    if ((m_context.platform.windows.Style(hWnd) & style) == 0) return 0;
    const auto info = m_context.platform.windows.GetScrollInfo(hWnd, bar);
    if (!info) return 0;
    const int last = Narrowed(Narrowed(Wide(info->most) - info->least + 1) - static_cast<std::int64_t>(info->page));
    return (info->position > 0 ? towardsLeast : 0) | (info->position < last ? towardsMost : 0);
}

bool DragTree::SetNodeCallbacks(WindowHandle hwndTV, ItemHandle hItem, Node* nod, bool fSet)
{
    TVITEM tvi;
    return Trapped(m_context.module, VARIABLES(hwndTV, hItem, nod, fSet), VARIABLES(tvi), [&](int& line) {
        tvi.mask = TVIF_IMAGE;
        tvi.hItem = hItem;
        line = 2;
        tvi.iImage = fSet ? I_IMAGECALLBACK : nod != nullptr ? m_state.DragImage : 0;
        line = 3;
        return TreeView_SetItem(hwndTV, tvi);
    });
}

bool DragTree::ClientToWindow(WindowHandle hWnd, Point& pt)
{
    return Trapped(m_context.module, VARIABLES(hWnd, pt), [&](int& line) {
        Windows& windows = m_context.platform.windows;
        if (!windows.Exists(hWnd)) return false;
        line = 2;
        const auto client = windows.ClientRect(hWnd);
        if (!client) return false;
        line = 3;
        const auto corner = windows.ClientToScreen(hWnd, {client->left, client->top});
        const auto window = windows.WindowRect(hWnd);
        if (!corner || !window) return false;
        line = 4;
        pt = {Narrowed(Wide(pt.x) + corner->x - window->left), Narrowed(Wide(pt.y) + corner->y - window->top)};
        return true;
    });
}

Point DragTree::Pointer()
{
    return m_context.platform.windows.ScreenToClient(Window(), m_context.platform.system.CursorPosition());
}

TVHITTESTINFO DragTree::HitAt(Point client)
{
    TVHITTESTINFO hit;
    hit.pt = client;
    hit.hItem = TreeView_HitTest(Window(), hit);
    return hit;
}

DragTree::Layout DragTree::LayoutNow()
{
    Windows& windows = m_context.platform.windows;
    const WindowHandle window = Window();
    return {m_context.TV.LayoutVersion(), windows.GetScrollPos(window, 0), windows.GetScrollPos(window, 1)};
}

void DragTree::BeginLayout()
{
    m_layout = LayoutNow();
    m_moved.reset();
}

/// Rows that lie elsewhere than at the last look may have moved just now.
void DragTree::NoteLayout()
{
    const Layout now = LayoutNow();
    if (now != m_layout) m_moved = m_context.platform.system.Now();
    m_layout = now;
}

bool DragTree::RowsMovedSince(std::uint32_t time)
{
    NoteLayout();
    // The clock wraps around.
    return m_moved && static_cast<std::int32_t>(time - *m_moved) <= 0;
}

void DragTree::ShowDropTarget(ItemHandle item)
{
    NoteLayout();
    TreeView_SelectDropTarget(Window(), item);
    m_context.TV.DropHighlightMoved(m_context.TV.NodeOfItem(item));
}

}  // namespace sylvex
