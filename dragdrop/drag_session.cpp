#include "dragdrop/drag_session.h"

#include <cstdlib>
#include <utility>

#include "dragdrop/drag_tree.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr Point kMiddleOfIcon{8, 8};

/// The picture that a node of this text is dragged with: its place in the image list.
short DragPicture(Regional& regional, const ImageList& pictures, std::wstring_view text)
{
    constexpr std::wstring_view kArchive = L".zip";
    const bool archive =
        text.size() >= kArchive.size() && EqualText(regional, text.substr(text.size() - kArchive.size()), kArchive);
    // The picture of a type is there once a file of it has been listed.
    return static_cast<short>(pictures.IndexOf(archive && pictures.Contains(L"zip") ? L"zip" : L"cl"));
}

}  // namespace

DragSession::DragSession(Instance& instance, DragOwner& owner)
    : m_instance(instance),
      m_owner(owner),
      m_tree(std::make_unique<DragTree>(instance)),
      m_autoScroll(instance, *m_tree, owner)
{
}

DragSession::~DragSession()
{
    Cancel();
}

Node* DragSession::Dragged() const
{
    Node* node = m_instance.m_nodDrag.IfAlive();
    return node != nullptr && m_instance.TV.ItemOf(*node) == m_instance.m_hitemDrag ? node : nullptr;
}

void DragSession::Pressed(short Button, Point where)
{
    if (Dragging() || Button == 0) return;
    m_instance.m_iButton = Button;
    m_instance.m_ptBtnDown = m_instance.platform.system.CursorPosition();
    Node* node = m_busy ? nullptr : m_instance.TV.HitTest(where);
    m_instance.m_nodDrag = NodeRef(node);
    if (node != nullptr)
        m_instance.DragImage = DragPicture(m_instance.platform.regional, m_instance.ImageList1, node->Text());
}

void DragSession::Moved(short Button)
{
    if (!m_instance.m_DragDropEnable || Button != m_instance.m_iButton) return;
    try {
        if (Dragging()) {
            DoDrag();
        } else if (m_instance.m_nodDrag) {
            BeginDrag();
        }
    } catch (...) {
        Cancel();
        throw;
    }
}

void DragSession::Released()
{
    if (!Dragging()) m_instance.m_nodDrag = NodeRef();
}

bool DragSession::PastThreshold(Point pointer) const
{
    return std::abs(pointer.x - m_instance.m_ptBtnDown.x) >= m_instance.m_szDrag.cx ||
           std::abs(pointer.y - m_instance.m_ptBtnDown.y) >= m_instance.m_szDrag.cy;
}

void DragSession::BeginDrag()
{
    Point pt;
    Trapped(m_instance, L"BeginDrag", kNone, VARIABLES(pt), [&](int& line) {
        line = 1;
        if (!PastThreshold(m_instance.platform.system.CursorPosition())) return;
        line = 2;
        m_instance.m_hwndTV = m_instance.TV.hWnd();
        pt = m_instance.platform.drag.ScreenToClient(m_instance.m_hwndTV, m_instance.m_ptBtnDown);
        const TVHITTESTINFO hit = m_tree->HitAt(pt);
        if (hit.hItem == 0 || (hit.flags & kHitGrip) == 0) return;
        line = 3;
        if (m_tree->TreeView_GetParent(m_instance.m_hwndTV, hit.hItem) == 0) return;
        // Rows may have moved since the press; what is dragged must be what was pressed.
        if (m_instance.TV.NodeOfItem(hit.hItem) != m_instance.m_nodDrag.IfAlive()) return;
        line = 4;
        m_instance.m_hitemDrag = hit.hItem;
        line = 5;
        m_instance.m_himlDrag = PictureOf(hit.hItem);
        line = 6;
        if (m_instance.m_himlDrag != 0) Hold(pt);
    });
}

/// The picture that follows the pointer; the tree draws it with a picture of the item's own.
ImageListHandle DragSession::PictureOf(ItemHandle item)
{
    const WindowHandle window = m_instance.m_hwndTV;
    m_tree->SetNodeCallbacks(window, item, m_instance.m_nodDrag.IfAlive(), false);
    const ImageListHandle picture = m_tree->TreeView_CreateDragImage(window, item);
    try {
        m_tree->SetNodeCallbacks(window, item, m_instance.m_nodDrag.IfAlive(), true);
    } catch (...) {
        if (picture != 0) m_instance.platform.images.Destroy(picture);
        throw;
    }
    return picture;
}

/// Takes the mouse and shows the picture, held where the person grabbed it (client pixels).
void DragSession::Hold(Point ptBtnDown)
{
    Drag& drag = m_instance.platform.drag;
    const WindowHandle window = m_instance.m_hwndTV;
    Rect rc;
    if (!m_tree->TreeView_GetItemRect(window, m_instance.m_hitemDrag, rc, true)) rc = {};
    const Size picture = drag.PictureSize(m_instance.m_himlDrag);
    m_instance.m_ptHotSpot = {ptBtnDown.x - rc.left + picture.cx - (rc.right - rc.left), ptBtnDown.y - rc.top};
    Point where = ptBtnDown;
    m_tree->ClientToWindow(window, where);
    drag.SetCapture(
        window, [this] { FromPlatform(m_owner, [this] { Cancel(); }); },
        [this] { FromPlatform(m_owner, [this] { Escape(); }); });
    m_escaped = false;
    m_tree->BeginLayout();
    m_tree->ShowDropTarget(m_instance.m_hitemDrag);
    drag.UpdateWindow(window);
    m_autoScroll.Begin();
    // A tree that could not draw the row gives a list without pictures: then the icon alone follows.
    if (!drag.BeginDrag(m_instance.m_himlDrag, 0, m_instance.m_ptHotSpot))
        drag.BeginDrag(m_instance.ImageList1.Handle(), m_instance.DragImage, kMiddleOfIcon);
    drag.DragEnter(window, where);
}

void DragSession::DoDrag()
{
    Point pt;
    Trapped(m_instance, L"DoDrag", kNone, VARIABLES(pt), [&](int& line) {
        if (Dragged() == nullptr) return Cancel();
        Drag& drag = m_instance.platform.drag;
        const WindowHandle window = m_instance.m_hwndTV;
        line = 1;
        pt = m_tree->Pointer();
        drag.DragLeave(window);
        line = 2;
        const TVHITTESTINFO hit = m_tree->HitAt(pt);
        m_tree->ShowDropTarget(hit.hItem);
        line = 3;
        drag.UpdateWindow(window);  // what waits to be painted would come over the picture
        line = 4;
        m_tree->ClientToWindow(window, pt);
        drag.DragMove(pt);
        drag.DragEnter(window, pt);
        line = 5;
        if (hit.hItem != 0) m_instance.platform.system.ResetPointer();
        line = 6;
        m_autoScroll.Moved(hit);
    });
}

Node* DragSession::TargetAt(Point where)
{
    if (m_tree->RowsMovedSince(m_instance.platform.system.InputTime())) return nullptr;
    Node* target = m_instance.TV.DropHighlight();
    return target != nullptr && m_tree->HitAt(where).hItem == m_instance.TV.ItemOf(*target) ? target : nullptr;
}

void DragSession::Escape() noexcept
{
    if (!Dragging()) return;
    m_escaped = true;
    Cancel();
}

void DragSession::EndDrag1()
{
    if (!Dragging()) return;
    Trapped(m_instance, L"EndDrag1", kNone, kNone, [&](int& line) {
        Drag& drag = m_instance.platform.drag;
        line = 1;
        // First of all, since letting go of the mouse is told to those who watch it.
        const ImageListHandle picture = std::exchange(m_instance.m_himlDrag, 0);
        drag.ReleaseCapture();
        line = 2;
        drag.DragLeave(m_instance.m_hwndTV);
        drag.EndDrag();
        m_instance.platform.images.Destroy(picture);
        line = 3;
        m_autoScroll.Stop();
        line = 4;
        m_instance.platform.system.ResetPointer();
    });
}

void DragSession::EndDrag2()
{
    Trapped(m_instance, L"EndDrag2", kNone, kNone, [&](int& line) {
        m_instance.m_hitemDrag = 0;
        m_instance.m_nodDrag = NodeRef();
        line = 1;
        if (!m_instance.platform.windows.Exists(m_instance.m_hwndTV)) return;
        m_tree->ShowDropTarget(0);
        line = 2;
        m_instance.TV.Refresh();
    });
}

void DragSession::Cancel() noexcept
{
    if (!Dragging()) return;
    for (const auto end : {&DragSession::EndDrag1, &DragSession::EndDrag2}) {
        try {
            (this->*end)();
        } catch (...) {  // reported; picture and mouse have been let go of
        }
    }
}

}  // namespace sylvex
