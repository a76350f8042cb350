#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/types.h"

namespace sylvex {

class Node;
class Nodes;
class ValueText;

/// A picture of a node: by key in the bound image list, by number from 1, or none.
using ImageName = std::variant<std::monostate, std::wstring, int>;

/// An object outside the model that belongs to one node (its automation object); told when the node goes.
class NodeCompanion {
public:
    virtual ~NodeCompanion() = default;
    virtual void NodeRemoved() noexcept = 0;
};

/// A reference to a node that survives the node's removal.
class NodeRef {
public:
    NodeRef() = default;
    NodeRef(Node* node) { Watch(node); }
    NodeRef(const NodeRef& other) { Watch(other.m_node), m_gone = other.m_gone; }
    NodeRef& operator=(const NodeRef& other);
    ~NodeRef() { Unwatch(); }
    /// The node; null when never set. Raises 35605 when the node has been removed.
    Node* Get() const;
    /// The node, null when never set or removed.
    Node* IfAlive() const { return m_node; }
    Node& operator*() const;
    Node* operator->() const { return &**this; }
    explicit operator bool() const { return m_node != nullptr; }
    /// The node's text for error reports.
    void ReportTo(ValueText& report) const;

private:
    friend class Nodes;
    void Watch(Node* node);
    void Unwatch() noexcept;
    Node* m_node = nullptr;
    NodeRef* m_next = nullptr;
    NodeRef** m_link = nullptr;
    bool m_gone = false;
};

/// A node of the tree. Only its collection (Nodes) creates and destroys nodes; whoever keeps one beyond a call that may
/// run host code keeps a NodeRef. Writing a property changes the model and tells the window.
class Node {
public:
    /// How reports show a node whose being alive is not known.
    static constexpr const wchar_t* kReportName = L"{Node}";

    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    const std::wstring& Key() const;
    /// Raises 35602 when another node has the key, 35603 for a number. Empty: no key.
    void SetKey(const std::wstring& key);
    const std::wstring& Text() const { return m_text; }
    void SetText(std::wstring_view text);
    /// The same for a host, which leaves the disk as it is: what waits to be asked for at the node and below it is
    /// asked before, by the paths that are true. May raise what the question raises.
    void SetTextAlone(std::wstring_view text);
    /// The three pictures; writing raises 35601 when the image list has none of that name.
    ImageName Image() const;
    void SetImage(const ImageName& image);
    ImageName SelectedImage() const;
    void SetSelectedImage(const ImageName& image);
    ImageName ExpandedImage() const;
    void SetExpandedImage(const ImageName& image);
    /// The box; writing raises no event.
    bool Checked() const { return m_checked; }
    void SetChecked(bool checked);
    bool Bold() const { return m_bold; }
    void SetBold(bool bold);
    /// Writes both marks without telling the window: for passes, which end with Nodes::MarksWritten.
    void WriteMarks(bool checked, bool bold)
    {
        m_checked = checked;
        m_bold = bold;
    }
    bool Expanded() const { return m_expanded; }
    /// Opens or closes the node as the user would, events included. A node without children stays closed.
    void SetExpanded(bool expanded);
    bool Selected() const;
    void SetSelected(bool selected);
    bool Sorted() const { return m_sorted; }
    /// True: sorts the children by text now, and keeps later ones in order while set.
    void SetSorted(bool sorted);
    const ObjectRef& Tag() const;
    void SetTag(const ObjectRef& tag);

    /// Position in the collection, from 1.
    int Index() const;
    /// The same as far as it is known: placeholders that are still in question are not counted, and no disk is read.
    int KnownIndex() const;
    int Children() const { return m_childPending ? ResolvedChildren() : m_children; }
    Node* Child() const { return m_childPending ? ResolvedChild() : m_child; }
    /// What the directory record told of it when it was read (EntryKind); 0 for a node that is of no folder's listing.
    std::uint8_t Kind() const { return m_kind; }
    void SetKind(std::uint8_t kind) { m_kind = kind; }
    Node* Next() const { return m_next; }
    Node* Previous() const { return m_previous; }
    Node* Parent() const { return m_parent; }
    /// Moves the node with all below it under another one, as its last child. Raises 35614 when that lies below it.
    void SetParent(Node& parent);
    Node* Root() const;
    Node* FirstSibling() const;
    Node* LastSibling() const;
    /// The texts from the root down, joined by the tree's path separator.
    std::wstring FullPath() const;
    /// Opens the ancestors and scrolls the node into view; true when that changed anything.
    bool EnsureVisible();

    /// The same as Child, but null for a node whose placeholder has not been asked for: for passes that treat a
    /// placeholder like nothing.
    Node* LoadedChild() const { return m_child; }
    /// True while it is unknown whether the node has a placeholder child.
    bool ChildPending() const { return m_childPending; }
    /// For a node whose placeholder is not known yet: the mark that it gets when it turns out to exist.
    void SetPendingMark(bool checked) { m_pendingMark = checked; }

    NodeCompanion* Companion() const;
    void SetCompanion(NodeCompanion* companion);
    Nodes& Collection() const { return *m_nodes; }

private:
    friend class Nodes;
    friend class NodeRef;
    friend class TreeView;

    /// What few nodes have.
    struct Extras {
        std::wstring key;
        ObjectRef tag;
        int selectedImage = 0;
        NodeRef* watchers = nullptr;
        NodeCompanion* companion = nullptr;
        std::unique_ptr<Extras> next;  // once the node is gone
    };

    Node() = default;
    ~Node() = default;
    Extras& NeedExtras();
    int ResolvedChildren() const;
    Node* ResolvedChild() const;

    Nodes* m_nodes = nullptr;
    Node* m_parent = nullptr;
    Node* m_child = nullptr;
    Node* m_lastChild = nullptr;
    Node* m_next = nullptr;
    Node* m_previous = nullptr;
    ItemHandle m_item = 0;  // the window's row, 0 while the parent has never been opened
    std::wstring m_text;
    std::unique_ptr<Extras> m_extras;
    int m_children = 0;
    std::uint32_t m_slot = 0;
    int m_image = 0;  // numbers of ImageNames
    int m_expandedImage = 0;
    bool m_checked : 1 = false;
    bool m_bold : 1 = false;
    bool m_expanded : 1 = false;
    bool m_sorted : 1 = false;
    bool m_childPending : 1 = false;
    bool m_pendingMark : 1 = false;
    bool m_opening : 1 = false;   // its expand event runs: losing the last child does not close it
    bool m_realised : 1 = false;  // the children have rows in the window
    std::uint8_t m_kind = 0;
};

}  // namespace sylvex
