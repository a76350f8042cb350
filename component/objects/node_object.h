#pragma once

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

    STDMETHODIMP get_Text(BSTR* value) override;
    STDMETHODIMP put_Text(BSTR value) override;
    STDMETHODIMP get_Key(BSTR* value) override;
    STDMETHODIMP put_Key(BSTR value) override;
    STDMETHODIMP get_Image(VARIANT* value) override;
    STDMETHODIMP put_Image(VARIANT value) override;
    STDMETHODIMP get_SelectedImage(VARIANT* value) override;
    STDMETHODIMP put_SelectedImage(VARIANT value) override;
    STDMETHODIMP get_ExpandedImage(VARIANT* value) override;
    STDMETHODIMP put_ExpandedImage(VARIANT value) override;
    STDMETHODIMP get_Checked(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Checked(VARIANT_BOOL value) override;
    STDMETHODIMP get_Bold(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Bold(VARIANT_BOOL value) override;
    STDMETHODIMP get_Expanded(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Expanded(VARIANT_BOOL value) override;
    STDMETHODIMP get_Selected(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Selected(VARIANT_BOOL value) override;
    STDMETHODIMP get_Sorted(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Sorted(VARIANT_BOOL value) override;
    STDMETHODIMP get_Tag(VARIANT* value) override;
    STDMETHODIMP put_Tag(VARIANT value) override;
    STDMETHODIMP get_Index(LONG* value) override;
    STDMETHODIMP get_Children(LONG* value) override;
    STDMETHODIMP get_Child(INode** value) override;
    STDMETHODIMP get_FirstSibling(INode** value) override;
    STDMETHODIMP get_LastSibling(INode** value) override;
    STDMETHODIMP get_Next(INode** value) override;
    STDMETHODIMP get_Previous(INode** value) override;
    STDMETHODIMP get_Parent(INode** value) override;
    STDMETHODIMP putref_Parent(INode* value) override;
    STDMETHODIMP get_Root(INode** value) override;
    STDMETHODIMP get_FullPath(BSTR* value) override;
    STDMETHODIMP EnsureVisible(VARIANT_BOOL* result) override;
    STDMETHODIMP get_ForeColor(OLE_COLOR* value) override;
    STDMETHODIMP put_ForeColor(OLE_COLOR value) override;
    STDMETHODIMP get_BackColor(OLE_COLOR* value) override;
    STDMETHODIMP put_BackColor(OLE_COLOR value) override;

private:
    ~NodeObject() override;

    template <class Read>
    HRESULT GetText(BSTR* value, Read&& read);
    template <class Read>
    HRESULT GetFlag(VARIANT_BOOL* value, Read&& read);
    template <class Read>
    HRESULT GetImage(VARIANT* value, Read&& read);
    template <class Read>
    HRESULT GetNode(INode** value, Read&& read);
    /// Runs `write` on the live node.
    template <class Write>
    HRESULT Let(Write&& write);

    Node* m_node;
};

/// A picture as hosts name it: by key, by number from 1, or none when it is missing, empty or 0.
ImageName ImageNameOf(const VARIANT& value);

}  // namespace sylvex
