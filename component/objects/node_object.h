#pragma once

#include <functional>

#include "component/objects/tree_objects.h"

namespace sylvex {

/// How the component knows its own node objects among others that answer the same interface.
class NodeIdentity {
public:
    /// Its own identifier, which no type library names.
    static const IID kId;
    void* Find(const IID& id) { return id == kId ? this : nullptr; }

protected:
    ~NodeIdentity() = default;
};

/// The automation object of one node, the only one of that node while it is held.
class NodeObject final : public TreeMember<INode, ::Node, NodeIdentity>, public NodeCompanion {
public:
    NodeObject(std::shared_ptr<TreeLink> link, Node& node);

    /// The object behind an interface that a caller handed in; raises 13 for somebody else's.
    static NodeObject& Known(INode& object);
    /// Raises 35605 when the node has been removed.
    Node& Live() const;
    bool BelongsTo(const TreeLink& link) const { return Link().get() == &link; }

    void NodeRemoved() noexcept override { m_node = nullptr; }

    STDMETHODIMP get_Text(BSTR* value) override { return Get(value, &Node::Text); }
    STDMETHODIMP put_Text(BSTR value) override { return Let(value, &Node::SetTextAlone); }
    STDMETHODIMP get_Key(BSTR* value) override { return Get(value, &Node::Key); }
    STDMETHODIMP put_Key(BSTR value) override { return Let(value, &Node::SetKey); }
    STDMETHODIMP get_Image(VARIANT* value) override { return GetImage(value, &Node::Image); }
    STDMETHODIMP put_Image(VARIANT value) override { return LetImage(value, &Node::SetImage); }
    STDMETHODIMP get_SelectedImage(VARIANT* value) override { return GetImage(value, &Node::SelectedImage); }
    STDMETHODIMP put_SelectedImage(VARIANT value) override { return LetImage(value, &Node::SetSelectedImage); }
    STDMETHODIMP get_ExpandedImage(VARIANT* value) override { return GetImage(value, &Node::ExpandedImage); }
    STDMETHODIMP put_ExpandedImage(VARIANT value) override { return LetImage(value, &Node::SetExpandedImage); }
    STDMETHODIMP get_Checked(VARIANT_BOOL* value) override { return Get(value, &Node::Checked); }
    STDMETHODIMP put_Checked(VARIANT_BOOL value) override { return Let(value, &Node::SetChecked); }
    STDMETHODIMP get_Bold(VARIANT_BOOL* value) override { return Get(value, &Node::Bold); }
    STDMETHODIMP put_Bold(VARIANT_BOOL value) override { return Let(value, &Node::SetBold); }
    STDMETHODIMP get_Expanded(VARIANT_BOOL* value) override { return Get(value, &Node::Expanded); }
    STDMETHODIMP put_Expanded(VARIANT_BOOL value) override { return Let(value, &Node::SetExpanded); }
    STDMETHODIMP get_Selected(VARIANT_BOOL* value) override { return Get(value, &Node::Selected); }
    STDMETHODIMP put_Selected(VARIANT_BOOL value) override { return Let(value, &Node::SetSelected); }
    STDMETHODIMP get_Sorted(VARIANT_BOOL* value) override { return Get(value, &Node::Sorted); }
    STDMETHODIMP put_Sorted(VARIANT_BOOL value) override { return Let(value, &Node::SetSorted); }
    STDMETHODIMP get_Tag(VARIANT* value) override;
    STDMETHODIMP put_Tag(VARIANT value) override;
    STDMETHODIMP get_Index(LONG* value) override { return Get(value, &Node::Index); }
    STDMETHODIMP get_Children(LONG* value) override { return Get(value, &Node::Children); }
    STDMETHODIMP get_Child(INode** value) override { return GetNode(value, &Node::Child); }
    STDMETHODIMP get_FirstSibling(INode** value) override { return GetNode(value, &Node::FirstSibling); }
    STDMETHODIMP get_LastSibling(INode** value) override { return GetNode(value, &Node::LastSibling); }
    STDMETHODIMP get_Next(INode** value) override { return GetNode(value, &Node::Next); }
    STDMETHODIMP get_Previous(INode** value) override { return GetNode(value, &Node::Previous); }
    STDMETHODIMP get_Parent(INode** value) override { return GetNode(value, &Node::Parent); }
    STDMETHODIMP putref_Parent(INode* value) override;
    STDMETHODIMP get_Root(INode** value) override { return GetNode(value, &Node::Root); }
    STDMETHODIMP get_FullPath(BSTR* value) override { return Get(value, &Node::FullPath); }
    STDMETHODIMP EnsureVisible(VARIANT_BOOL* result) override { return Get(result, &Node::EnsureVisible); }
    STDMETHODIMP get_ForeColor(OLE_COLOR* value) override;
    STDMETHODIMP put_ForeColor(OLE_COLOR value) override;
    STDMETHODIMP get_BackColor(OLE_COLOR* value) override;
    STDMETHODIMP put_BackColor(OLE_COLOR value) override;

private:
    ~NodeObject() override;

    /// What a member of the live node gives.
    template <class Value, class Read>
    HRESULT Get(Value* value, Read read)
    {
        return TreeMember::Get(value, [&]() -> decltype(auto) { return std::invoke(read, Live()); });
    }
    HRESULT GetNode(INode** value, Node* (Node::*read)() const)
    {
        return TreeMember::Get(value, [&] { return Objects().ObjectOf((Live().*read)()); });
    }
    HRESULT GetImage(VARIANT* value, ImageName (Node::*read)() const);
    /// Writes to the live node.
    template <class Value, class Write>
    HRESULT Let(Value value, Write write)
    {
        return Member([&] { std::invoke(write, Live(), Given(value)); });
    }
    HRESULT LetImage(const VARIANT& value, void (Node::*write)(const ImageName&));

    Node* m_node;
};

/// A picture as hosts name it: by key, by number from 1, or none when it is missing, empty or 0.
ImageName ImageNameOf(const VARIANT& value);

}  // namespace sylvex
