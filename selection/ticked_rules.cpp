#include "selection/ticked_rules.h"

#include <vector>

#include "platform/path_names.h"

namespace sylvex {

namespace {

bool IsFolder(const Node& node)
{
    return (node.Kind() & kKindFolder) != 0;
}

/// One walk over a branch of the tree, which asks no disk and keeps no stack of calls.
class TickWalk {
public:
    TickWalk(FolderTree& tree, PathRules& rules, bool recursive, bool takesNew)
        : m_tree(tree), m_rules(rules), m_recursive(recursive), m_takesNew(takesNew)
    {
    }

    void Run(Node& top)
    {
        m_open.push_back(Visit(top, {}));
        Node* node = &top;
        for (;;) {
            if (GoesOnBelow(*node)) {
                node = node->LoadedChild();
            } else {
                while (node != &top && node->Next() == nullptr) {
                    node = node->Parent();
                    m_open.pop_back();
                }
                if (node == &top) return;
                m_open.pop_back();
                node = node->Next();
            }
            m_open.push_back(Visit(*node, m_open.back()));
        }
    }

private:
    using Taken = PathRules::Taken;

    bool GoesOnBelow(const Node& node) const
    {
        return node.LoadedChild() != nullptr && (node.Checked() ? !m_recursive : node.Bold());
    }

    /// Says of the node what does not follow from what is taken around it; gives what is taken in it.
    Taken Visit(Node& node, Taken around)
    {
        if (node.Text().empty()) return around;  // a placeholder
        if (m_recursive || !IsFolder(node)) {
            const bool taken = node.Checked() || (m_recursive && node.Bold() && m_takesNew);
            if (taken != (IsFolder(node) ? around.folders : around.files)) Say(node, taken, PathRules::Reach::Branch);
            return {taken, taken};
        }
        const bool files = node.Checked() || (m_takesNew && HasTickedFile(node));
        if (files) Say(node, true, PathRules::Reach::Files);
        return {false, files};
    }

    static bool HasTickedFile(const Node& folder)
    {
        for (const Node* child = folder.LoadedChild(); child != nullptr; child = child->Next())
            if (child->Checked() && !IsFolder(*child) && !child->Text().empty()) return true;
        return false;
    }

    void Say(Node& node, bool include, PathRules::Reach reach)
    {
        const std::wstring path = m_tree.DiskPathOf(node);
        if (IsWholePath(path)) m_rules.Add({WithoutSeparator(path), include, reach});
    }

    FolderTree& m_tree;
    PathRules& m_rules;
    const bool m_recursive;
    const bool m_takesNew;
    std::vector<Taken> m_open;
};

/// The topmost nodes that stand for places on a disk.
std::vector<Node*> FindTops(Node* first, FolderTree& tree)
{
    std::vector<Node*> tops;
    for (Node* node = first; node != nullptr;) {
        const bool isTop = !node->Text().empty() && IsWholePath(tree.DiskPathOf(*node));
        if (isTop) tops.push_back(node);
        Node* next = isTop ? nullptr : node->LoadedChild();
        for (; next == nullptr && node != nullptr; node = node->Parent())
            next = node->Next();
        node = next;
    }
    return tops;
}

}  // namespace

PathRules RulesOfTicks(const Context& context, FolderTree& tree, bool recursive, bool takesNew)
{
    PathRules rules(context.platform.regional);
    for (Node* const top : FindTops(context.TV.GetNodes().FirstRoot(), tree)) {
        PathRules branch(context.platform.regional);
        TickWalk(tree, branch, recursive, takesNew).Run(*top);
        rules.Unite(branch);
    }
    rules.Minimise();
    return rules;
}

}  // namespace sylvex
