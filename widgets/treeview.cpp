#include "widgets/treeview.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "platform/runtime_error.h"

namespace sylvex {

namespace {

Node& NodeOf(ItemData item)
{
    return *reinterpret_cast<Node*>(item);
}

}  // namespace

TreeView::TreeView(Platform& platform, TreeViewEvents& events, WindowHandle parent)
    : m_platform(platform), m_events(events), m_nodes(platform.regional, m_images, *this)
{
    AttachWindow(parent);
}

TreeView::~TreeView()
{
    TreeView::Destroying();
    m_window.reset();
}

void TreeView::AttachWindow(WindowHandle parent)
{
    m_window = m_platform.windows.CreateTree(parent, *this);
    WriteSettings();
    m_window->SetRedraw(false);
    InsertRowsOf(nullptr);
    if (m_updates == 0) m_window->SetRedraw(true);
    if (Node* selected = m_selected.IfAlive(); selected != nullptr && selected->m_item != 0)
        m_window->Select(selected->m_item);
}

void TreeView::DetachWindow()
{
    Destroying();
    m_window.reset();
    Forget(nullptr);
}

void TreeView::WriteSettings()
{
    for (std::size_t i = 0; i < std::size(m_settings); ++i)
        m_window->Apply(static_cast<TreeSetting>(i), m_settings[i]);
    m_window->SetImageList(m_imageList);
    m_window->SetFont(m_font);
    m_window->SetMouseIcon(m_mouseIcon);
    m_window->SetVisible(m_visible);
    m_window->Move(m_place);
    if (m_hasCheckPictures) m_window->InstallCheckPictures();
}

// ---- what the model tells

void TreeView::Added(Node& node)
{
    Node* parent = node.m_parent;
    if (parent != nullptr && !parent->m_realised) {
        if (parent->m_children == 1) ChildrenChanged(*parent);
        return;
    }
    if (m_window == nullptr || (parent == nullptr && !m_rootsRealised)) return;
    const Node* previous = node.m_previous;
    InsertRow(node, node.m_next == nullptr ? 0 : previous != nullptr ? previous->m_item : kFirstRow);
    if (parent != nullptr && parent->m_children == 1) ChildrenChanged(*parent);
    if (!node.m_expanded) return;
    Realise(&node);
    m_window->Expand(node.m_item, true);
}

void TreeView::Removing(Node& node)
{
    if (!HasRow(node)) return;
    ++m_layoutVersion;
    if (m_edited.IfAlive() == &node) m_window->CancelEdit();
    DeleteRows(&node);
    node.m_item = 0;
    Forget(&node);
}

void TreeView::RemovingAll()
{
    if (m_window != nullptr) {
        m_window->CancelEdit();
        DeleteRows(nullptr);
    }
}

void TreeView::TextChanged(Node& node)
{
    if (HasRow(node)) m_window->SetText(node.m_item, node.m_text);
}

void TreeView::ImagesChanged(Node& node)
{
    if (!HasRow(node)) return;
    const ItemLook look = LookOf(node);
    m_window->SetImages(node.m_item, look.image, look.selectedImage);
}

void TreeView::MarksChanged()
{
    if (m_window != nullptr) m_window->MarksChanged();
}

void TreeView::ChildrenChanged(Node& parent)
{
    // While the window asks, the answer goes back to it; writing a row that is being painted is dear.
    if (HasRow(parent) && m_asked != &parent) m_window->SetButton(parent.m_item, ButtonOf(parent));
}

namespace {

/// Whether all above the node is open.
bool IsUncovered(const Node& node)
{
    for (const Node* above = node.Parent(); above != nullptr; above = above->Parent())
        if (!above->Expanded()) return false;
    return true;
}

}  // namespace

void TreeView::Reordered(Node* parent)
{
    const bool realised = parent != nullptr ? parent->m_realised : m_rootsRealised;
    if (!realised || m_window == nullptr) return;
    const NodeRef selected = m_selected;
    m_window->CancelEdit();
    Updating hidden(*this);
    for (Node* node = parent != nullptr ? parent->m_child : m_nodes.FirstRoot(); node != nullptr; node = node->m_next)
        DeleteRows(node);
    m_byWindow = true;
    Forget(parent);
    InsertRowsOf(parent);
    if (parent != nullptr && parent->m_expanded) m_window->Expand(parent->m_item, true);
    // A row inside a closed folder is left alone: to select it would open the folder.
    if (selected.IfAlive() != nullptr && selected->m_item != 0 && IsUncovered(*selected))
        m_window->Select(selected->m_item);
    m_byWindow = false;
    hidden.End();
    m_selected = selected;
}

/// Opens the node in the model: raises the event (which loads what is below) and gives the children rows. False when
/// it has no children to show, or went away meanwhile.
bool TreeView::OpenModel(Node& node)
{
    if (node.Children() == 0) return false;
    const NodeRef keep(&node);
    node.m_expanded = node.m_opening = true;
    const auto finish = [&] {
        ++m_layoutVersion;
        if (keep.IfAlive() == nullptr) return false;
        node.m_opening = false;
        if (node.Children() == 0) node.m_expanded = false;
        if (node.m_expanded) Realise(&node);
        return node.m_expanded;
    };
    try {
        m_events.TV_Expand(node);
    } catch (...) {
        finish();  // what has been loaded shows all the same
        throw;
    }
    return finish();
}

void TreeView::CloseModel(Node& node)
{
    const NodeRef keep(&node);
    node.m_expanded = false;
    ++m_layoutVersion;
    m_events.TV_Collapse(node);
}

void TreeView::Open(Node& node, bool expanded)
{
    const NodeRef keep(&node);
    if (expanded) {
        if (!OpenModel(node)) return;
    } else {
        CloseModel(node);
    }
    if (keep.IfAlive() == nullptr || !HasRow(node) || node.m_expanded != expanded) return;
    m_window->Expand(node.m_item, expanded);
    ImagesChanged(node);
}

namespace {

/// A node whose parent has been opened meanwhile. A folder with one childless child is read again by that: then it is
/// the child that bears the name now. Raises 35605 when there is none.
Node& AsItIsNow(const NodeRef& node, const NodeRef& parent, const std::wstring& text)
{
    if (node.IfAlive() != nullptr || parent.IfAlive() == nullptr) return *node;
    for (Node* child = parent->Child(); child != nullptr; child = child->Next())
        if (child->Text() == text) return *child;
    return *node;
}

}  // namespace

/// Opens nodes that lie one above the other, from the last to the first; true when one was closed. Where that are
/// several, the uppermost row opens when all below it have: in a closed row the window has little to do, and it paints
/// once.
bool TreeView::OpenLevels(const std::vector<NodeRef>& levels)
{
    const auto isClosed = [](const NodeRef& level) { return !level->m_expanded; };
    const auto closed = std::count_if(levels.begin(), levels.end(), isClosed);
    const auto openAll = [&] {
        for (auto level = levels.rbegin(); level != levels.rend(); ++level)
            (*level)->SetExpanded(true);
    };
    if (closed < 2) return openAll(), closed > 0;
    Updating hidden(*this);
    const NodeRef top = *std::find_if(levels.rbegin(), levels.rend(), isClosed);
    const auto uncover = [&] {
        if (top.IfAlive() == nullptr || !HasRow(*top) || !top->m_expanded) return;
        m_window->Expand(top->m_item, true);
        ImagesChanged(*top);
    };
    try {
        OpenModel(*top);
        openAll();
    } catch (...) {
        uncover();
        throw;
    }
    uncover();
    hidden.End();
    return true;
}

bool TreeView::Show(Node& node)
{
    const NodeRef keep(&node);
    const NodeRef parent(node.m_parent);
    const std::wstring text = node.m_text;
    std::vector<NodeRef> ancestors;
    for (Node* above = node.m_parent; above != nullptr; above = above->m_parent)
        ancestors.emplace_back(above);
    const bool opened = OpenLevels(ancestors);
    Node& alive = AsItIsNow(keep, parent, text);
    const bool scrolled = HasRow(alive) && m_window->EnsureVisible(alive.m_item);
    return opened || scrolled;
}

// ---- what hosts ask

void TreeView::SetSelectedItem(Node* node)
{
    if (node == nullptr) {
        m_selected = NodeRef();
        if (m_window != nullptr) m_window->Select(0);
        return;
    }
    const NodeRef keep(node);
    const NodeRef parent(node->m_parent);
    const std::wstring text = node->m_text;
    if (parent.IfAlive() != nullptr) {
        Show(*parent);
        parent->SetExpanded(true);
    }
    Node& selected = AsItIsNow(keep, parent, text);
    m_selected = NodeRef(&selected);
    if (HasRow(selected)) m_window->Select(selected.m_item);
}

void TreeView::SetDropHighlight(Node* node)
{
    m_dropHighlight = NodeRef(node);
    if (m_window != nullptr) m_window->SelectDropTarget(node != nullptr ? node->m_item : 0);
}

Node* TreeView::HitTest(Point where)
{
    if (m_window == nullptr) return nullptr;
    const TreeHit hit = m_window->HitTest(where);
    return hit.item != 0 ? &NodeOf(hit.data) : nullptr;
}

Node* TreeView::NodeOfItem(ItemHandle item)
{
    if (hWnd() == 0) return nullptr;
    const std::optional<ItemData> data = m_window->DataOf(item);
    return data ? &NodeOf(*data) : nullptr;
}

void TreeView::StartLabelEdit()
{
    Node* node = SelectedItem();
    if (node != nullptr && HasRow(*node)) m_window->EditLabel(node->m_item);
}

void TreeView::StartLabelEdit(const std::wstring& typed)
{
    StartLabelEdit();
    if (hWnd() != 0) m_window->TypeLabel(typed);
}

void TreeView::Refresh()
{
    if (m_window != nullptr) m_window->Refresh();
}

WindowHandle TreeView::hWnd() const
{
    return m_window != nullptr ? m_window->Handle() : 0;
}

int TreeView::VisibleCount()
{
    return m_window != nullptr ? m_window->VisibleCount() : 0;
}

void TreeView::SetImageList(const ImageList* images)
{
    SetImageListHandle(images != nullptr ? images->Handle() : 0);
    m_images.Bind(images);
}

void TreeView::SetImageListHandle(ImageListHandle images)
{
    m_imageList = images;
    m_images.ShowInstead(images != 0 ? m_platform.images.Count(images) : 0);
    if (m_window != nullptr) m_window->SetImageList(images);
}

void TreeView::SetVisible(bool visible)
{
    m_visible = visible;
    if (m_window != nullptr) m_window->SetVisible(visible);
}

void TreeView::Move(const Rect& place)
{
    m_place = place;
    if (m_window != nullptr) m_window->Move(place);
}

TreeView::Updating::Updating(TreeView& tree) : m_tree(&tree)
{
    if (tree.m_updates == 0 && tree.m_window != nullptr) tree.m_window->SetRedraw(false);
    ++tree.m_updates;
}

TreeView::Updating::~Updating()
{
    try {
        End();
    } catch (...) {  // some other failure is on its way
    }
}

void TreeView::Updating::End()
{
    TreeView* const tree = std::exchange(m_tree, nullptr);
    if (tree == nullptr || --tree->m_updates > 0 || tree->m_window == nullptr) return;
    tree->m_window->SetRedraw(true);
}

void TreeView::SetSetting(TreeSetting setting, int value)
{
    const bool pointer = setting == TreeSetting::MousePointer;
    const bool valid = pointer ? (value >= 0 && value <= 15) || value == 99 : value == 0 || value == 1;
    if (!valid) throw InvalidPropertyValue();
    m_settings[static_cast<std::size_t>(setting)] = value;
    if (setting == TreeSetting::Checkboxes && value == 0) m_hasCheckPictures = false;
    if (m_window != nullptr) m_window->Apply(setting, value);
}

void TreeView::SetFont(const ObjectRef& font)
{
    m_font = font;
    if (m_window != nullptr) m_window->SetFont(font);
}

void TreeView::SetMouseIcon(const ObjectRef& picture)
{
    m_mouseIcon = picture;
    if (m_window != nullptr) m_window->SetMouseIcon(picture);
}

void TreeView::InstallCheckPictures()
{
    m_hasCheckPictures = Setting(TreeSetting::Checkboxes) != 0;
    if (m_window != nullptr) m_window->InstallCheckPictures();
}

}  // namespace sylvex
