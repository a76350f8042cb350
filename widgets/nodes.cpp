#include "widgets/nodes.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/sort_keys.h"

namespace sylvex {

namespace {

/// The node after `node` in a walk over `top` and all below it that meets children before parents; starts at Deepest.
Node* Deepest(Node* node)
{
    while (node->LoadedChild() != nullptr)
        node = node->LoadedChild();
    return node;
}

}  // namespace

Nodes::Nodes(Regional& regional, ImageNames& images, NodesMirror& mirror)
    : m_regional(regional), m_images(images), m_mirror(mirror), m_pool(sizeof(Node))
{
}

/// The tags of nodes that have gone, until all is in order again: letting go of one may run code of the host, which may
/// do anything to the nodes that are left.
class Nodes::Discarded {
public:
    Discarded() = default;
    Discarded(const Discarded&) = delete;
    Discarded& operator=(const Discarded&) = delete;
    ~Discarded()
    {
        while (m_first)
            m_first = std::move(m_first->next);
    }
    void Take(std::unique_ptr<Node::Extras> extras)
    {
        extras->next = std::move(m_first);
        m_first = std::move(extras);
    }

private:
    std::unique_ptr<Node::Extras> m_first;
};

Nodes::~Nodes()
{
    Discarded discarded;
    for (Node* node : m_slots)
        if (node != nullptr) Release(*node, discarded);
}

Node& Nodes::Create(std::wstring_view text)
{
    if (m_slots.size() + 2 > m_slots.capacity()) m_slots.reserve(std::max<std::size_t>(1024, m_slots.size() * 2));
    Node* node = new (m_pool.Take()) Node;
    node->m_nodes = this;
    node->m_text = text;
    node->m_slot = m_order.Append(true);
    m_slots.push_back(node);
    return *node;
}

Node& Nodes::Add(Node* relative, Relationship relationship, const std::wstring& key, std::wstring_view text,
                 const ImageName& image, const ImageName& selectedImage)
{
    if (IsNumeric(key)) throw InvalidKey();
    if (!key.empty() && m_keys.contains(key)) throw KeyNotUnique();
    if (relative != nullptr && relationship == Relationship::Child && relative->m_childPending) Resolve(*relative);
    Node* parent = nullptr;
    Node* before = Place(parent, relative, relationship);
    Node& node = Create(text);
    if (!key.empty()) SetKeyOf(node, key);
    node.m_image = m_images.Number(image);
    const int selected = m_images.Number(selectedImage);
    if (selected != 0) node.NeedExtras().selectedImage = selected;
    Link(node, parent, before);
    if (parent != nullptr && parent->m_sorted) InsertSorted(node);
    m_mirror.Added(node);
    return node;
}

Node& Nodes::AddChild(Node& parent, std::wstring_view text, int image, int expandedImage)
{
    Node& node = Create(text);
    node.m_image = image;
    node.m_expandedImage = expandedImage;
    Link(node, &parent, nullptr);
    m_mirror.Added(node);
    return node;
}

/// The node's later sibling for a place described as Nodes::Add takes it (null: last), and its parent.
Node* Nodes::Place(Node*& parent, Node* relative, Relationship relationship) const
{
    if (relative != nullptr && relationship == Relationship::Child) {
        parent = relative;
        return nullptr;
    }
    parent = relative != nullptr ? relative->m_parent : nullptr;
    switch (relationship) {
        case Relationship::First:
            return parent != nullptr ? parent->m_child : m_firstRoot;
        case Relationship::Next:
            return relative != nullptr ? relative->m_next : nullptr;
        case Relationship::Previous:
            return relative;
        default:
            return nullptr;
    }
}

void Nodes::Link(Node& node, Node* parent, Node* before)
{
    Node*& first = parent != nullptr ? parent->m_child : m_firstRoot;
    Node*& last = parent != nullptr ? parent->m_lastChild : m_lastRoot;
    node.m_parent = parent;
    node.m_next = before;
    node.m_previous = before != nullptr ? before->m_previous : last;
    (node.m_previous != nullptr ? node.m_previous->m_next : first) = &node;
    (before != nullptr ? before->m_previous : last) = &node;
    if (parent != nullptr) ++parent->m_children;
}

void Nodes::Unlink(Node& node)
{
    Node* parent = node.m_parent;
    Node*& first = parent != nullptr ? parent->m_child : m_firstRoot;
    Node*& last = parent != nullptr ? parent->m_lastChild : m_lastRoot;
    (node.m_previous != nullptr ? node.m_previous->m_next : first) = node.m_next;
    (node.m_next != nullptr ? node.m_next->m_previous : last) = node.m_previous;
    node.m_previous = node.m_next = node.m_parent = nullptr;
    if (parent != nullptr) --parent->m_children;
}

/// Frees the node's memory and tells those who watch it; the node is linked to nothing any more.
void Nodes::Release(Node& node, Discarded& discarded)
{
    if (node.m_extras) {
        if (!node.m_extras->key.empty()) m_keys.erase(node.m_extras->key);
        while (NodeRef* watcher = node.m_extras->watchers) {
            watcher->Unwatch();
            watcher->m_gone = true;
        }
        if (NodeCompanion* companion = node.m_extras->companion) companion->NodeRemoved();
        if (node.m_extras->tag) discarded.Take(std::move(node.m_extras));
    }
    node.~Node();
    m_pool.Give(&node);
}

void Nodes::Destroy(Node& node, Discarded& discarded)
{
    if (node.m_childPending) --m_pending;
    m_order.Empty(node.m_slot);
    m_slots[node.m_slot] = nullptr;
    Release(node, discarded);
}

void Nodes::Remove(Node& node)
{
    m_mirror.Removing(node);
    Discarded discarded;
    Node* parent = node.m_parent;
    Unlink(node);
    // Children first, without recursion: a branch may be deeper than the stack.
    Node* at = Deepest(&node);
    while (at != &node) {
        Node* next = at->m_next != nullptr ? Deepest(at->m_next) : at->m_parent;
        Destroy(*at, discarded);
        at = next;
    }
    Destroy(node, discarded);
    if (parent != nullptr && parent->m_children == 0) {
        if (!parent->m_opening) parent->m_expanded = false;
        m_mirror.ChildrenChanged(*parent);
    }
    CompactIfSparse();
}

void Nodes::Clear()
{
    m_mirror.RemovingAll();
    Discarded discarded;
    std::vector<Node*> doomed;
    doomed.swap(m_slots);
    m_order.Clear();
    m_keys.clear();
    m_firstRoot = m_lastRoot = nullptr;
    m_pending = 0;
    for (Node* node : doomed)
        if (node != nullptr) Release(*node, discarded);
    m_pool.Reset();
}

int Nodes::Count()
{
    ResolveAll();
    return static_cast<int>(m_order.Count());
}

Node& Nodes::Item(int index)
{
    if (index < 1) throw IndexOutOfBounds();
    const auto position = static_cast<std::uint32_t>(index);
    // Placeholders that are still in question matter only when they would stand before.
    if (m_pending > 0 && (position > m_order.Count() || m_order.SlotAt(position) >= m_lowestPending)) ResolveAll();
    if (position > m_order.Count()) throw IndexOutOfBounds();
    return *m_slots[m_order.SlotAt(position)];
}

Node* Nodes::Find(const std::wstring& key) const
{
    const auto found = m_keys.find(key);
    return found == m_keys.end() ? nullptr : found->second;
}

const Node* Nodes::AtAddress(std::uintptr_t address) const noexcept
{
    if (!m_pool.Holds(address)) return nullptr;
    // Memory of nodes, though perhaps of one that has gone: the slots know which ones live.
    const auto* const node = reinterpret_cast<const Node*>(address);
    return node->m_slot < m_slots.size() && m_slots[node->m_slot] == node ? node : nullptr;
}

Node& Nodes::Item(const std::wstring& key)
{
    Node* node = Find(key);
    if (node == nullptr) throw ElementNotFound();
    return *node;
}

void Nodes::SetKeyOf(Node& node, const std::wstring& key)
{
    if (key == node.Key()) return;
    if (IsNumeric(key)) throw InvalidKey();
    if (!key.empty() && !m_keys.try_emplace(key, &node).second) throw KeyNotUnique();
    if (!node.Key().empty()) m_keys.erase(node.Key());
    node.NeedExtras().key = key;
}

void Nodes::DeferPlaceholder(Node& node)
{
    node.m_childPending = true;
    if (m_pending++ == 0 || node.m_slot < m_lowestPending) m_lowestPending = node.m_slot;
    m_order.Append(false);
    m_slots.push_back(nullptr);
    m_mirror.ChildrenChanged(node);
}

void Nodes::Resolve(Node& node)
{
    node.m_childPending = false;
    --m_pending;
    // A failure is reported, and who hears of it may remove the node.
    const std::uint32_t slot = node.m_slot;
    const auto lives = [&] { return slot < m_slots.size() && m_slots[slot] == &node; };
    bool exists = false;
    try {
        exists = m_question && m_question(node);
    } catch (...) {
        if (!lives()) throw;
        node.m_childPending = true;
        ++m_pending;
        throw;
    }
    if (!lives()) throw NodeGone();
    if (exists) {
        Node* child = new (m_pool.Take()) Node;
        child->m_nodes = this;
        child->m_checked = node.m_pendingMark;
        child->m_slot = node.m_slot + 1;
        m_order.Fill(child->m_slot);
        m_slots[child->m_slot] = child;
        Link(*child, &node, nullptr);
        m_mirror.Added(*child);
    }
    m_mirror.ChildrenChanged(node);
}

void Nodes::ResolveAll()
{
    for (std::size_t slot = m_lowestPending; m_pending > 0 && slot < m_slots.size(); ++slot)
        if (m_slots[slot] != nullptr && m_slots[slot]->m_childPending) Resolve(*m_slots[slot]);
}

void Nodes::ResolveBelow(Node& top)
{
    if (m_pending == 0) return;
    std::vector<NodeRef> waiting;
    const Node* node = &top;
    while (node != nullptr) {
        if (node->m_childPending) waiting.emplace_back(m_slots[node->m_slot]);
        if (node->m_child != nullptr) {
            node = node->m_child;
            continue;
        }
        while (node != &top && node->m_next == nullptr)
            node = node->m_parent;
        node = node != &top ? node->m_next : nullptr;
    }
    for (const NodeRef& asked : waiting)
        if (asked.IfAlive() != nullptr && asked->m_childPending) Resolve(*asked);
}

void Nodes::SetPathSeparator(const std::wstring& separator)
{
    if (separator == m_pathSeparator) return;
    ResolveAll();
    m_pathSeparator = separator;
}

/// Renumbers the slots when most are empty, so that reading a folder again and again does not grow the order.
void Nodes::CompactIfSparse()
{
    constexpr std::uint32_t kWorthwhile = 4096;
    if (m_order.Slots() < kWorthwhile || m_order.Count() + static_cast<std::uint32_t>(m_pending) > m_order.Slots() / 4)
        return;
    std::vector<Node*> nodes;
    for (Node* node : m_slots)
        if (node != nullptr) nodes.push_back(node);
    m_slots.clear();
    m_order.Clear();
    bool anyPending = false;
    for (Node* node : nodes) {
        node->m_slot = m_order.Append(true);
        m_slots.push_back(node);
        if (!node->m_childPending) continue;
        if (!std::exchange(anyPending, true)) m_lowestPending = node->m_slot;
        m_order.Append(false);
        m_slots.push_back(nullptr);
    }
}

void Nodes::Sort(Node* parent)
{
    std::vector<Node*> nodes;
    for (Node* node = parent != nullptr ? parent->Child() : m_firstRoot; node != nullptr; node = node->m_next)
        nodes.push_back(node);
    SortKeys keys(nodes.size());
    for (const Node* node : nodes)
        m_regional.AppendSortKey(node->m_text, keys.Next());
    const std::vector<std::uint32_t> places = keys.Sorted();
    if (std::is_sorted(places.begin(), places.end())) return;
    Node* previous = nullptr;
    Node*& first = parent != nullptr ? parent->m_child : m_firstRoot;
    for (const std::uint32_t place : places) {
        Node* const node = nodes[place];
        node->m_previous = previous;
        (previous != nullptr ? previous->m_next : first) = node;
        previous = node;
    }
    if (previous != nullptr) previous->m_next = nullptr;
    (parent != nullptr ? parent->m_lastChild : m_lastRoot) = previous;
    m_mirror.Reordered(parent);
}

void Nodes::SetSorted(bool sorted)
{
    m_sorted = sorted;
    if (sorted) Sort(nullptr);
}

/// Moves a node that was linked last to its place among its sorted siblings.
void Nodes::InsertSorted(Node& node)
{
    Node* parent = node.m_parent;
    Unlink(node);
    Node* before = parent->m_child;
    while (before != nullptr && m_regional.Compare(before->m_text, node.m_text) <= 0)
        before = before->m_next;
    Link(node, parent, before);
}

void Nodes::Move(Node& node, Node& parent)
{
    for (Node* above = &parent; above != nullptr; above = above->m_parent)
        if (above == &node) throw WouldIntroduceCycle();
    if (parent.m_childPending) Resolve(parent);
    m_mirror.Removing(node);
    Node* oldParent = node.m_parent;
    Unlink(node);
    Link(node, &parent, nullptr);
    if (parent.m_sorted) InsertSorted(node);
    if (oldParent != nullptr && oldParent->m_children == 0) oldParent->m_expanded = false;
    if (oldParent != nullptr) m_mirror.ChildrenChanged(*oldParent);
    m_mirror.Added(node);
    m_mirror.ChildrenChanged(parent);
}

}  // namespace sylvex
