#include "host/path_walker.h"

#include <functional>

#include "host/automation.h"

namespace sylvex::host {
namespace {

constexpr wchar_t kMyComputer[] = L"MyComputer";

bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right)
{
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

/// Expands a node that is not expanded. One that is must be left alone: expanding it again may read it again.
void Expand(INode& node)
{
    if (!ReadFlag(node, &INode::get_Expanded, L"Node.Expanded")) {
        Check(node.put_Expanded(VARIANT_TRUE), L"Node.Expanded");
    }
}

ComPtr<INode> FindChild(INode& parent, const std::function<bool(INode&)>& matches)
{
    ComPtr<INode> child = ReadObject(parent, &INode::get_Child, L"Node.Child");
    while (child && !matches(*child))
        child = ReadObject(*child, &INode::get_Next, L"Node.Next");
    return child;
}

/// Child of a name, in the very case first: some file systems tell "A" from "a".
ComPtr<INode> FindNamed(INode& parent, const std::wstring& name)
{
    const auto textOf = [](INode& node) { return ReadText(node, &INode::get_Text, L"Node.Text"); };
    if (auto exact = FindChild(parent, [&](INode& node) { return textOf(node) == name; })) return exact;
    return FindChild(parent, [&](INode& node) { return EqualIgnoringCase(textOf(node), name); });
}

ComPtr<INode> FindDrive(ITreeView& tree, const std::wstring& drive)
{
    const ComPtr<INodes> nodes = ReadObject(tree, &ITreeView::get_Nodes, L"TreeView.Nodes");
    const Variant key(kMyComputer);
    ComPtr<INode> computer;
    Check(nodes->get_Item(key.Get(), computer.Put()), L"Nodes.Item");
    Expand(*computer);
    return FindChild(
        *computer, [&](INode& node) { return EqualIgnoringCase(ReadText(node, &INode::get_Key, L"Node.Key"), drive); });
}

}  // namespace

ComPtr<ITreeView> TreeOf(_Sylvex& control)
{
    return ReadValue<ITreeView>(control, &_Sylvex::get_TreeView, L"TreeView");
}

ComPtr<INode> PathWalker::Find(const TreePath& path) const
{
    ComPtr<INode> node = FindDrive(*TreeOf(m_control), path.drive);
    if (!node) throw Failure(path.Text() + L": the tree has no drive " + path.drive);
    for (const std::wstring& name : path.names) {
        Expand(*node);
        ComPtr<INode> child = FindNamed(*node, name);
        if (!child) throw Failure(path.Text() + L": the tree has no " + name + L" there");
        node = std::move(child);
    }
    return node;
}

void PathWalker::Open(const TreePath& path) const
{
    const ComPtr<INode> node = Find(path);
    LONG children = 0;
    Check(node->get_Children(&children), L"Node.Children");
    if (children > 0) Expand(*node);
    Check(m_control.put_SelectedItem(node.Get()), L"SelectedItem");
    VARIANT_BOOL scrolled = VARIANT_FALSE;
    Check(node->EnsureVisible(&scrolled), L"Node.EnsureVisible");
}

void PathWalker::Tick(const TreePath& path) const
{
    const ComPtr<INode> node = Find(path);
    Check(node->put_Checked(VARIANT_TRUE), L"Node.Checked");
    INode* ticked = node.Get();
    VARIANT_BOOL result = VARIANT_FALSE;
    Check(m_control.CheckNodeSelective(&ticked, &result), L"CheckNodeSelective");
}

}  // namespace sylvex::host
