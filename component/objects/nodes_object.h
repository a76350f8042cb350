#pragma once

#include "component/objects/tree_objects.h"

namespace sylvex {

/// The automation object of a tree's nodes.
class NodeCollection final : public TreeMember<INodes, ::Nodes> {
public:
    explicit NodeCollection(std::shared_ptr<TreeLink> link) : TreeMember(std::move(link)) {}

    STDMETHODIMP get_Item(VARIANT Index, INode** value) override;
    STDMETHODIMP get_Count(LONG* value) override;
    STDMETHODIMP Add(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text, VARIANT Image,
                     VARIANT SelectedImage, INode** result) override;
    STDMETHODIMP Remove(VARIANT Index) override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP get__NewEnum(IUnknown** value) override;

private:
    Node& At(const VARIANT& index) const;
    Node* Relative(const VARIANT& relative) const;
};

}  // namespace sylvex
