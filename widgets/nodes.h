#pragma once

#include <functional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/regional.h"
#include "widgets/image_names.h"
#include "widgets/node.h"
#include "widgets/node_pool.h"
#include "widgets/order_index.h"

namespace sylvex {

/// How a new node stands to its relative.
enum class Relationship { First = 0, Last = 1, Next = 2, Previous = 3, Child = 4 };

/// What the model tells its window. Only Open and Show may run host code.
class NodesMirror {
public:
    virtual ~NodesMirror() = default;
    virtual void Added(Node& node) = 0;
    virtual void Removing(Node& node) = 0;
    virtual void RemovingAll() = 0;
    virtual void TextChanged(Node& node) = 0;
    virtual void ImagesChanged(Node& node) = 0;
    virtual void MarksChanged() = 0;
    virtual void ChildrenChanged(Node& parent) = 0;
    /// The children (of the roots: null) stand in another order.
    virtual void Reordered(Node* parent) = 0;
    virtual void Open(Node& node, bool expanded) = 0;
    virtual bool Show(Node& node) = 0;
    virtual void Select(Node* node) = 0;
    virtual Node* SelectedNode() = 0;
};

/// The nodes of a tree in the order of their adding: the model. Everything costs the same however many are loaded.
class Nodes {
public:
    Nodes(Regional& regional, ImageNames& images, NodesMirror& mirror);
    ~Nodes();
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;

    /// Adds a node. Without a relative it becomes a root (the last one, or the first). Raises 35602 for a key in use,
    /// 35603 for a key that is a number. A picture that the image list lacks leaves the node without one.
    Node& Add(Node* relative, Relationship relationship, const std::wstring& key, std::wstring_view text,
              const ImageName& image = {}, const ImageName& selectedImage = {});
    /// Adds a last child without key or checks of its arguments: the quick way for a folder's entries. `image` comes
    /// from ImageNames::Number.
    Node& AddChild(Node& parent, std::wstring_view text, int image, int expandedImage = 0);
    /// Leaves open whether `node`, just added and childless, has a placeholder child: it is asked when somebody wants
    /// to know, and every index is as if it had been there from the start.
    void DeferPlaceholder(Node& node);
    /// Answers for a node whose placeholder was deferred. May raise.
    using PlaceholderQuestion = std::function<bool(Node&)>;
    void SetPlaceholderQuestion(PlaceholderQuestion question) { m_question = std::move(question); }

    void Remove(Node& node);
    void Clear();
    int Count();
    /// Raises 35600 when `index` is not from 1 to Count().
    Node& Item(int index);
    /// Raises 35601 when no node has the key.
    Node& Item(const std::wstring& key);
    Node* Find(const std::wstring& key) const;
    /// The node that lives at an address, which may be any number; null when none does.
    const Node* AtAddress(std::uintptr_t address) const noexcept;
    /// The first root, null when empty. (Index 1 is the oldest node, which is the first root unless roots were inserted
    /// before it.)
    Node* FirstRoot() const { return m_firstRoot; }
    bool Empty() const { return m_order.Count() == 0; }
    /// The first node in index order that `wanted` (which must not change the tree) answers true for, null for none.
    /// Placeholders that are still in question are left out, and stay in question.
    template <class Wanted>
    Node* FirstOf(Wanted&& wanted) const
    {
        for (Node* node : m_slots)
            if (node != nullptr && wanted(*node)) return node;
        return nullptr;
    }
    void Sort(Node* parent);
    /// Whether a host wants the roots in order of their texts; true sorts them now.
    bool Sorted() const { return m_sorted; }
    void SetSorted(bool sorted);
    /// Marks have been written by Node::WriteMarks.
    void MarksWritten() { m_mirror.MarksChanged(); }

    const std::wstring& PathSeparator() const { return m_pathSeparator; }
    /// What waits to be asked for is asked before: later it would be another path. May raise what the question raises.
    void SetPathSeparator(const std::wstring& separator);
    ImageNames& Images() { return m_images; }

private:
    friend class Node;
    friend class NodeRef;
    Node& Create(std::wstring_view text);
    void Link(Node& node, Node* parent, Node* before);
    void Unlink(Node& node);
    class Discarded;
    void Destroy(Node& node, Discarded& discarded);
    void Release(Node& node, Discarded& discarded);
    void InsertSorted(Node& node);
    Node* Place(Node*& parent, Node* relative, Relationship relationship) const;
    void SetKeyOf(Node& node, const std::wstring& key);
    void Resolve(Node& node);
    void ResolveAll();
    void ResolveBelow(Node& top);
    void CompactIfSparse();
    void Move(Node& node, Node& parent);

    Regional& m_regional;
    ImageNames& m_images;
    NodesMirror& m_mirror;
    PlaceholderQuestion m_question;
    NodePool m_pool;
    OrderIndex m_order;
    std::vector<Node*> m_slots;  // slot -> node, null for an empty slot; a deferred placeholder keeps the slot behind
    std::unordered_map<std::wstring, Node*> m_keys;
    Node* m_firstRoot = nullptr;
    Node* m_lastRoot = nullptr;
    int m_pending = 0;
    std::uint32_t m_lowestPending = 0;  // no deferred placeholder has a lower slot while m_pending is above 0
    std::wstring m_pathSeparator = L"\\";
    bool m_sorted = false;
};

}  // namespace sylvex
