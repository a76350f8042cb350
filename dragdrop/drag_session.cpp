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

DragSession::DragSession(const Context& context, FolderTree& folders, DragState& state, DragOwner& owner)
    : m_context(context),
      m_folders(folders),
      m_state(state),
      m_owner(owner),
      m_tree(std::make_unique<DragTree>(context, state)),
      m_autoScroll(context, folders, state, *m_tree, owner)
{
}

DragSession::~DragSession()
{
    Cancel();
}

Node* DragSession::Dragged() const
{
    Node* node = m_state.m_nodDrag.IfAlive();
    return node != nullptr && m_context.TV.ItemOf(*node) == m_state.m_hitemDrag ? node : nullptr;
}

void DragSession::Pressed(short Button, Point where)
{
    if (Dragging() || Button == 0) return;
    m_state.m_iButton = Button;
    m_state.m_ptBtnDown = m_context.platform.system.CursorPosition();
    Node* node = m_busy ? nullptr : m_context.TV.HitTest(where);
    m_state.m_nodDrag = NodeRef(node);
    if (node != nullptr)
        m_state.DragImage = DragPicture(m_context.platform.regional, m_context.ImageList1, node->Text());
}

void DragSession::Moved(short Button)
{
    if (!m_state.m_DragDropEnable || Button != m_state.m_iButton) return;
    try {
        if (Dragging()) {
            DoDrag();
        } else if (m_state.m_nodDrag) {
            BeginDrag();
        }
    } catch (...) {
        Cancel();
        throw;
    }
}

void DragSession::Released()
{
    if (!Dragging()) m_state.m_nodDrag = NodeRef();
}

bool DragSession::PastThreshold(Point pointer) const
{
    return std::abs(pointer.x - m_state.m_ptBtnDown.x) >= m_folders.DragThreshold().cx ||
           std::abs(pointer.y - m_state.m_ptBtnDown.y) >= m_folders.DragThreshold().cy;
}

void DragSession::BeginDrag()
{
    Point pt;
    Trapped(m_context.module, kNone, VARIABLES(pt), [&](int& line) {
        if (!PastThreshold(m_context.platform.system.CursorPosition())) return;
        line = 2;
        m_folders.NoteWindow();
        pt = m_context.platform.windows.ScreenToClient(m_tree->Window(), m_state.m_ptBtnDown);
        const TVHITTESTINFO hit = m_tree->HitAt(pt);
        if (hit.hItem == 0 || (hit.flags & kHitGrip) == 0) return;
        line = 3;
        if (m_tree->TreeView_GetParent(m_tree->Window(), hit.hItem) == 0) return;
        // Rows may have moved since the press; what is dragged must be what was pressed.
        if (m_context.TV.NodeOfItem(hit.hItem) != m_state.m_nodDrag.IfAlive()) return;
        line = 4;
        m_state.m_hitemDrag = hit.hItem;
        line = 5;
        m_state.m_himlDrag = PictureOf(hit.hItem);
        line = 6;
        if (m_state.m_himlDrag != 0) Hold(pt);
    });
}

/// The picture that follows the pointer; the tree draws it with a picture of the item's own.
ImageListHandle DragSession::PictureOf(ItemHandle item)
{
    const WindowHandle window = m_tree->Window();
    m_tree->SetNodeCallbacks(window, item, m_state.m_nodDrag.IfAlive(), false);
    const ImageListHandle picture = m_tree->TreeView_CreateDragImage(window, item);
    try {
        m_tree->SetNodeCallbacks(window, item, m_state.m_nodDrag.IfAlive(), true);
    } catch (...) {
        if (picture != 0) m_context.platform.images.Destroy(picture);
        throw;
    }
    return picture;
}

/// Takes the mouse and shows the picture, held where the person grabbed it (client pixels).
void DragSession::Hold(Point ptBtnDown)
{
    Drag& drag = m_context.platform.drag;
    const WindowHandle window = m_tree->Window();
    Rect rc;
    if (!m_tree->TreeView_GetItemRect(window, m_state.m_hitemDrag, rc, true)) rc = {};
    const Size picture = drag.PictureSize(m_state.m_himlDrag);
    m_state.m_ptHotSpot = {ptBtnDown.x - rc.left + picture.cx - (rc.right - rc.left), ptBtnDown.y - rc.top};
    Point where = ptBtnDown;
    m_tree->ClientToWindow(window, where);
    drag.SetCapture(
        window, [this] { FromPlatform(m_owner, [this] { Cancel(); }); },
        [this] { FromPlatform(m_owner, [this] { Escape(); }); });
    m_escaped = false;
    m_tree->BeginLayout();
    m_tree->ShowDropTarget(m_state.m_hitemDrag);
    m_context.platform.windows.UpdateWindow(window);
    m_autoScroll.Begin();
    // A tree that could not draw the row gives a list without pictures: then the icon alone follows.
    if (!drag.BeginDrag(m_state.m_himlDrag, 0, m_state.m_ptHotSpot))
        drag.BeginDrag(m_context.ImageList1.Handle(), m_state.DragImage, kMiddleOfIcon);
    drag.DragEnter(window, where);
}

void DragSession::DoDrag()
{
    Point pt;
    Trapped(m_context.module, kNone, VARIABLES(pt), [&](int& line) {
        if (Dragged() == nullptr) return Cancel();
        Drag& drag = m_context.platform.drag;
        const WindowHandle window = m_tree->Window();
        pt = m_tree->Pointer();
        drag.DragLeave(window);
        line = 2;
        const TVHITTESTINFO hit = m_tree->HitAt(pt);
        m_tree->ShowDropTarget(hit.hItem);
        line = 3;
        m_context.platform.windows.UpdateWindow(window);  // what waits to be painted would come over the picture
        line = 4;
        m_tree->ClientToWindow(window, pt);
        drag.DragMove(pt);
        drag.DragEnter(window, pt);
        line = 5;
        if (hit.hItem != 0) m_context.platform.system.ResetPointer();
        line = 6;
        m_autoScroll.Moved(hit);
    });
}

Node* DragSession::TargetAt(Point where)
{
    if (m_tree->RowsMovedSince(m_context.platform.system.InputTime())) return nullptr;
    Node* target = m_context.TV.DropHighlight();
    return target != nullptr && m_tree->HitAt(where).hItem == m_context.TV.ItemOf(*target) ? target : nullptr;
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
    Trapped(m_context.module, [&](int& line) {
        Drag& drag = m_context.platform.drag;
        // First of all, since letting go of the mouse is told to those who watch it.
        const ImageListHandle picture = std::exchange(m_state.m_himlDrag, 0);
        drag.ReleaseCapture();
        line = 2;
        drag.DragLeave(m_tree->Window());
        drag.EndDrag();
        m_context.platform.images.Destroy(picture);
        line = 3;
        m_autoScroll.Stop();
        line = 4;
        m_context.platform.system.ResetPointer();
    });
}

void DragSession::EndDrag2()
{
    Trapped(m_context.module, [&](int& line) {
        m_state.m_hitemDrag = 0;
        m_state.m_nodDrag = NodeRef();
        if (!m_context.platform.windows.Exists(m_tree->Window())) return;
        m_tree->ShowDropTarget(0);
        line = 2;
        m_context.TV.Refresh();
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
