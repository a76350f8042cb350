#pragma once

#include <memory>

#include "component/objects/tree_link.h"

#include "SylvexControl_h.h"

namespace sylvex {

/// The automation objects of a control's tree: the tree, its nodes, and one object for each node that somebody holds.
/// They may be held beyond the node and the control; then every member raises 35605.
class TreeObjects {
public:
    explicit TreeObjects(TreeOwner& owner);
    ~TreeObjects();
    TreeObjects(const TreeObjects&) = delete;
    TreeObjects& operator=(const TreeObjects&) = delete;

    /// The tree goes: from now on every object that is still held raises 35605.
    void Close();

    /// The same object each time, likewise below.
    const ComPtr<ITreeView>& TreeObject();
    const ComPtr<INodes>& NodesObject();
    /// Empty for null.
    ComPtr<INode> ObjectOf(Node* node);
    /// The node of an object that a host handed in; null for null. Raises 13 when it is no node, 35605 when the node
    /// has been removed, 35601 when it belongs to another tree.
    Node* NodeOf(IUnknown* object);

    /// What a host gave as the image list that the tree shows; empty while that is the control's own.
    const Variant& ImageList() const;
    /// Keeps what a host gives as the tree's image list, and answers its handle: 0 for nothing, the control's own for
    /// Empty, a number is the handle itself, an object tells it as hImageList. Raises 13 for anything else.
    ImageListHandle TakeImageList(const VARIANT& given);

private:
    std::shared_ptr<TreeLink> m_link;
    ComPtr<ITreeView> m_tree;
    ComPtr<INodes> m_nodes;
    Variant m_imageList;
    ImageListHandle m_imageListHandle = 0;
};

}  // namespace sylvex
