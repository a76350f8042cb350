#include "widgets/node.h"

#include "platform/runtime_error.h"
#include "platform/value_text.h"
#include "widgets/nodes.h"

namespace sylvex {

NodeRef& NodeRef::operator=(const NodeRef& other)
{
    if (this == &other) return *this;
    Unwatch();
    Watch(other.m_node);
    m_gone = other.m_gone;
    return *this;
}

void NodeRef::Watch(Node* node)
{
    m_gone = false;
    m_node = node;
    if (node == nullptr) return;
    NodeRef*& head = node->NeedExtras().watchers;
    m_next = head;
    m_link = &head;
    if (head != nullptr) head->m_link = &m_next;
    head = this;
}

void NodeRef::Unwatch() noexcept
{
    if (m_node == nullptr) return;
    *m_link = m_next;
    if (m_next != nullptr) m_next->m_link = m_link;
    m_node = nullptr;
    m_next = nullptr;
    m_link = nullptr;
}

Node* NodeRef::Get() const
{
    if (m_gone) throw NodeGone();
    return m_node;
}

Node& NodeRef::operator*() const
{
    Node* node = Get();
    if (node == nullptr) throw ObjectNotSet();
    return *node;
}

void NodeRef::ReportTo(ValueText& report) const
{
    if (m_node == nullptr) return report.Marker(m_gone ? L"{Removed Node}" : L"{Nothing}");
    report.Marker(L"Node", m_node->Text());
}

Node::Extras& Node::NeedExtras()
{
    if (!m_extras) m_extras = std::make_unique<Extras>();
    return *m_extras;
}

const std::wstring& Node::Key() const
{
    static const std::wstring none;
    return m_extras ? m_extras->key : none;
}

void Node::SetKey(const std::wstring& key)
{
    m_nodes->SetKeyOf(*this, key);
}

void Node::SetText(std::wstring_view text)
{
    m_text = text;
    m_nodes->m_mirror.TextChanged(*this);
}

void Node::SetTextAlone(std::wstring_view text)
{
    const NodeRef keep(this);
    m_nodes->ResolveBelow(*this);
    keep->SetText(text);
}

ImageName Node::Image() const
{
    return m_nodes->m_images.Name(m_image);
}

ImageName Node::SelectedImage() const
{
    return m_nodes->m_images.Name(m_extras ? m_extras->selectedImage : 0);
}

ImageName Node::ExpandedImage() const
{
    return m_nodes->m_images.Name(m_expandedImage);
}

void Node::SetImage(const ImageName& image)
{
    m_image = m_nodes->m_images.NumberOfShown(image);
    m_nodes->m_mirror.ImagesChanged(*this);
}

void Node::SetSelectedImage(const ImageName& image)
{
    NeedExtras().selectedImage = m_nodes->m_images.NumberOfShown(image);
    m_nodes->m_mirror.ImagesChanged(*this);
}

void Node::SetExpandedImage(const ImageName& image)
{
    m_expandedImage = m_nodes->m_images.NumberOfShown(image);
    m_nodes->m_mirror.ImagesChanged(*this);
}

void Node::SetChecked(bool checked)
{
    if (m_checked == checked) return;
    m_checked = checked;
    m_nodes->m_mirror.MarksChanged();
}

void Node::SetBold(bool bold)
{
    if (m_bold == bold) return;
    m_bold = bold;
    m_nodes->m_mirror.MarksChanged();
}

void Node::SetExpanded(bool expanded)
{
    if (m_expanded != expanded) m_nodes->m_mirror.Open(*this, expanded);
}

bool Node::Selected() const
{
    return m_nodes->m_mirror.SelectedNode() == this;
}

void Node::SetSelected(bool selected)
{
    if (selected != Selected()) m_nodes->m_mirror.Select(selected ? this : nullptr);
}

void Node::SetSorted(bool sorted)
{
    if (sorted) m_nodes->Sort(this);
    m_sorted = sorted;
}

const ObjectRef& Node::Tag() const
{
    static const ObjectRef none;
    return m_extras ? m_extras->tag : none;
}

void Node::SetTag(const ObjectRef& tag)
{
    NeedExtras().tag = tag;
}

int Node::Index() const
{
    m_nodes->ResolveAll();
    return static_cast<int>(m_nodes->m_order.PositionOf(m_slot));
}

int Node::KnownIndex() const
{
    return static_cast<int>(m_nodes->m_order.PositionOf(m_slot));
}

int Node::ResolvedChildren() const
{
    m_nodes->Resolve(*m_nodes->m_slots[m_slot]);
    return m_children;
}

Node* Node::ResolvedChild() const
{
    m_nodes->Resolve(*m_nodes->m_slots[m_slot]);
    return m_child;
}

void Node::SetParent(Node& parent)
{
    m_nodes->Move(*this, parent);
}

Node* Node::Root() const
{
    const Node* node = this;
    while (node->m_parent != nullptr)
        node = node->m_parent;
    return m_nodes->m_slots[node->m_slot];
}

Node* Node::FirstSibling() const
{
    return m_parent != nullptr ? m_parent->m_child : m_nodes->m_firstRoot;
}

Node* Node::LastSibling() const
{
    return m_parent != nullptr ? m_parent->m_lastChild : m_nodes->m_lastRoot;
}

std::wstring Node::FullPath() const
{
    const std::wstring& separator = m_nodes->m_pathSeparator;
    std::size_t length = 0;
    for (const Node* node = this; node != nullptr; node = node->m_parent)
        length += node->m_text.size() + (node->m_parent != nullptr ? separator.size() : 0);
    std::wstring path(length, L'\0');
    for (const Node* node = this; node != nullptr; node = node->m_parent) {
        length -= node->m_text.size();
        node->m_text.copy(&path[length], node->m_text.size());
        if (node->m_parent == nullptr) break;
        length -= separator.size();
        separator.copy(&path[length], separator.size());
    }
    return path;
}

bool Node::EnsureVisible()
{
    return m_nodes->m_mirror.Show(*this);
}

NodeCompanion* Node::Companion() const
{
    return m_extras ? m_extras->companion : nullptr;
}

void Node::SetCompanion(NodeCompanion* companion)
{
    NeedExtras().companion = companion;
}

}  // namespace sylvex
