#include <optional>
#include <vector>

#include "platform/runtime_error.h"
#include "widgets/treeview.h"

// The rows of the window, written from the model.

namespace sylvex {

namespace {

ItemData DataOf(Node& node)
{
    return reinterpret_cast<ItemData>(&node);
}

}  // namespace

bool TreeView::HasRow(const Node& node) const
{
    return m_window != nullptr && node.m_item != 0;
}

ExpandButton TreeView::ButtonOf(const Node& node) const
{
    if (node.m_childPending) return ExpandButton::Ask;
    return node.m_children > 0 ? ExpandButton::Yes : ExpandButton::No;
}

ItemLook TreeView::LookOf(const Node& node) const
{
    const int image = node.m_expanded && node.m_expandedImage != 0 ? node.m_expandedImage : node.m_image;
    const int selected = node.m_extras ? node.m_extras->selectedImage : 0;
    return {node.m_text,    m_images.Picture(image), m_images.Picture(selected != 0 ? selected : image),
            ButtonOf(node), node.m_checked,          node.m_bold};
}

void TreeView::InsertRow(Node& node, ItemHandle after)
{
    const ItemHandle parent = node.m_parent != nullptr ? node.m_parent->m_item : 0;
    ++m_layoutVersion;
    m_inserted = &node;
    node.m_item = m_window->Insert(parent, after, DataOf(node), LookOf(node));
    m_inserted = nullptr;
    if (node.m_item == 0) throw OutOfMemory();
}

/// Gives the children of `parent` (null: the roots) their rows, unless they have them.
void TreeView::Realise(Node* parent)
{
    const bool has = parent != nullptr ? parent->m_realised : m_rootsRealised;
    if (has || m_window == nullptr || (parent != nullptr && parent->m_item == 0)) return;
    Updating hidden(*this);
    InsertRowsOf(parent);
    hidden.End();
}

/// The same for all levels below that the model has open. Rows go in while their parent is still closed, which is what
/// keeps the window's own work small.
void TreeView::InsertRowsOf(Node* parent)
{
    std::vector<Node*> parents{parent};
    std::vector<Node*> opened;
    while (!parents.empty()) {
        Node* at = parents.back();
        parents.pop_back();
        (at != nullptr ? at->m_realised : m_rootsRealised) = true;
        if (at != nullptr && at != parent) opened.push_back(at);
        for (Node* child = at != nullptr ? at->m_child : m_nodes.FirstRoot(); child != nullptr; child = child->m_next) {
            InsertRow(*child, 0);
            if (child->m_expanded) parents.push_back(child);
        }
    }
    for (auto at = opened.rbegin(); at != opened.rend(); ++at)
        m_window->Expand((*at)->m_item, true);
}

namespace {

/// While it lives, a selection that the window moves on by itself is no click.
class ByWindow {
public:
    explicit ByWindow(bool& flag) : m_flag(flag) { m_flag = true; }
    ~ByWindow() { m_flag = false; }
    ByWindow(const ByWindow&) = delete;
    ByWindow& operator=(const ByWindow&) = delete;

private:
    bool& m_flag;
};

}  // namespace

/// The rows at every so many levels below a row (null: below none), upper ones first. The platform frees a branch by
/// calls of itself for each level, so a deep one has to go in pieces from its ends.
std::vector<ItemHandle> TreeView::PiecesOf(Node* top) const
{
    constexpr int kPiece = 256;
    std::vector<ItemHandle> pieces;
    int depth = 0;
    Node* node = top != nullptr ? top : m_nodes.FirstRoot();
    while (node != nullptr) {
        if (depth > 0 && depth % kPiece == 0) pieces.push_back(node->m_item);
        if (node->m_realised && node->m_child != nullptr) {
            node = node->m_child;
            ++depth;
            continue;
        }
        for (; node != top && node != nullptr && node->m_next == nullptr; --depth)
            node = node->m_parent;
        node = node != top && node != nullptr ? node->m_next : nullptr;
    }
    return pieces;
}

/// Deletes a row with all below it; null: every row.
void TreeView::DeleteRows(Node* top)
{
    const std::vector<ItemHandle> pieces = PiecesOf(top);
    std::optional<Updating> hidden;
    if (!pieces.empty()) hidden.emplace(*this);
    const ByWindow byWindow(m_byWindow);
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece)
        m_window->Delete(*piece);
    m_window->Delete(top != nullptr ? top->m_item : 0);
    if (hidden) hidden->End();
}

void TreeView::Destroying()
{
    try {
        if (m_window != nullptr && !PiecesOf(nullptr).empty() && m_window->MayEmpty()) DeleteRows(nullptr);
    } catch (...) {  // the window has gone before
    }
}

/// Takes the rows below `parent` (null: all) out of the model's books; the window has lost them already.
void TreeView::Forget(Node* parent)
{
    (parent != nullptr ? parent->m_realised : m_rootsRealised) = false;
    Node* node = parent != nullptr ? parent->m_child : m_nodes.FirstRoot();
    while (node != nullptr) {
        node->m_item = 0;
        if (node->m_realised && node->m_child != nullptr) {
            node->m_realised = false;
            node = node->m_child;
            continue;
        }
        node->m_realised = false;
        while (node->m_next == nullptr && node->m_parent != parent)
            node = node->m_parent;
        node = node->m_next;
    }
}

}  // namespace sylvex
