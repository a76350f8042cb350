#include "widgets/treeview.h"

// What the window tells. A failure has been reported by the procedure that it happened in; the window's own loop has
// nobody to pass it on to.

namespace sylvex {

namespace {

Node& NodeOf(ItemData item)
{
    return *reinterpret_cast<Node*>(item);
}

}  // namespace

template <class Body>
void TreeView::FromWindow(Body&& body) noexcept
{
    const std::shared_ptr<void> alive = m_events.KeepAlive();
    try {
        body();
    } catch (...) {
    }
}

bool TreeView::Owns(ItemHandle row, ItemData item) const noexcept
{
    const Node* node = m_nodes.AtAddress(item);
    return node != nullptr && (node->m_item == row || node == m_inserted);
}

bool TreeView::Expanding(ItemData item, bool expand)
{
    Node& node = NodeOf(item);
    if (node.m_expanded == expand) return true;
    const NodeRef keep(&node);
    const ItemHandle row = node.m_item;
    bool done = false;
    FromWindow([&] {
        try {
            expand ? static_cast<void>(OpenModel(node)) : CloseModel(node);
        } catch (...) {  // reported where it happened; what has been loaded shows all the same
        }
        // A node that has been moved or sorted has another row now, which is in this state already.
        done = keep.IfAlive() != nullptr && node.m_item == row && node.m_expanded == expand;
    });
    return done;
}

void TreeView::Expanded(ItemData item, bool)
{
    FromWindow([&] { ImagesChanged(NodeOf(item)); });
}

bool TreeView::HasChildren(ItemData item)
{
    bool has = false;
    FromWindow([&] {
        // The answer goes back to the window; writing a row that is being painted would be dear.
        m_asked = &NodeOf(item);
        try {
            has = NodeOf(item).Children() > 0;
        } catch (...) {
        }
        m_asked = nullptr;
    });
    return has;
}

RowMarks TreeView::Marks(ItemData item)
{
    const Node& node = NodeOf(item);
    return {node.m_checked, node.m_bold, LookOf(node).image};
}

void TreeView::CheckClicked(ItemData item)
{
    FromWindow([&] {
        Node& node = NodeOf(item);
        node.SetChecked(!node.m_checked);
        m_events.TV_NodeCheck(node);
    });
}

void TreeView::Selected(ItemData item, bool byUser)
{
    FromWindow([&] {
        m_selected = item != 0 ? NodeRef(&NodeOf(item)) : NodeRef();
        if (byUser && item != 0 && !m_byWindow) m_events.TV_NodeClick(NodeOf(item));
    });
}

void TreeView::Clicked(ItemData item)
{
    FromWindow([&] { m_events.TV_NodeClick(NodeOf(item)); });
}

void TreeView::DoubleClicked()
{
    FromWindow([&] { m_events.TV_DblClick(); });
}

void TreeView::KeyDown(short& key, short shift)
{
    FromWindow([&] { m_events.TV_KeyDown(key, shift); });
}

void TreeView::KeyPress(short& character)
{
    FromWindow([&] { m_events.TV_KeyPress(character); });
}

void TreeView::KeyUp(short& key, short shift)
{
    FromWindow([&] { m_events.TV_KeyUp(key, shift); });
}

void TreeView::MouseDown(short button, short shift, Point where)
{
    FromWindow([&] { m_events.TV_MouseDown(button, shift, where); });
}

void TreeView::MouseMove(short button, short shift, Point where)
{
    FromWindow([&] { m_events.TV_MouseMove(button, shift, where); });
}

void TreeView::MouseUp(short button, short shift, Point where)
{
    FromWindow([&] { m_events.TV_MouseUp(button, shift, where); });
}

bool TreeView::LabelEditing(ItemData item)
{
    bool cancel = false;
    FromWindow([&] {
        m_edited = NodeRef(&NodeOf(item));
        m_events.TV_BeforeLabelEdit(cancel);
        cancel = cancel || m_edited.IfAlive() == nullptr;
    });
    return !cancel;
}

bool TreeView::LabelEdited(ItemData, const std::optional<std::wstring>& text)
{
    if (!text || m_editEnds || m_edited.IfAlive() == nullptr) return false;
    bool kept = false;
    const NodeRef edited = m_edited;
    const ItemHandle row = m_edited->m_item;
    FromWindow([&] {
        m_editEnds = true;
        bool cancel = false;
        try {
            m_events.TV_AfterLabelEdit(cancel, *text);
        } catch (...) {
            cancel = true;
        }
        m_editEnds = false;
        Node* node = edited.IfAlive();
        if (cancel || node == nullptr) return;
        kept = node->m_item == row;
        // Another row of the node has to be told; the window writes to the one that was edited.
        if (kept) {
            node->m_text = *text;
        } else {
            node->SetText(*text);
        }
    });
    return kept;
}

}  // namespace sylvex
