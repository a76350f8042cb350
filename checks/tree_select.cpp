#include "checks/tree_select.h"

#include "diagnostics/named_module.h"

namespace sylvex {

namespace {

/// The module as reports know it.
class ModTreeSelect : public NamedModule {
public:
    using NamedModule::NamedModule;
    void DumpVariables(Dump& dump) const override
    {
        dump.Add("InTreeSetParent", InTreeSetParent());
        dump.Add("m_Sylvex", m_Sylvex());
    }
};

CheckState StateOf(bool checked)
{
    return checked ? CheckState::Checked : CheckState::Unchecked;
}

}  // namespace

bool& InTreeSetParent()
{
    thread_local bool inTreeSetParent = false;
    return inTreeSetParent;
}

Marker& m_Sylvex()
{
    thread_local Marker sylvex{L"{Nothing}"};
    return sylvex;
}

TreeSelect::TreeSelect(const Context& context, ChecksState& state)
    : m_context(context), m_state(state), m_module(std::make_unique<ModTreeSelect>(L"modTreeSelect", context.platform))
{
}

TreeSelect::~TreeSelect() = default;

void TreeSelect::TreeSelectiveCheck(Node& Node, bool Recursive)
{
    const NodeRef node(&Node);
    const auto parameters = Variables("Node,Recursive", node, Recursive);
    Trapped(*m_module, parameters, [&](int& line) {
        Node.SetBold(false);
        line = 2;
        TreeSetChildren(Node, Node.Checked(), Recursive);
        line = 3;
        if (!TreeCheckSibling(Node, Node.Checked())) {
            line = 4;
            TreeSetParents(Node, CheckState::Mixed);
        } else if (Recursive) {
            line = 5;
            TreeSetParents(Node, StateOf(Node.Checked()));
        } else {
            // Without recursion a tick stands for one folder only, so the branch above is never wholly selected.
            line = 6;
            Node.SetBold(true);
            TreeSetParents(Node, CheckState::Mixed);
        }
        line = 7;
        m_context.TV.GetNodes().MarksWritten();
    });
}

namespace {

/// Marks all that is loaded below `top`. A placeholder that nobody has asked for yet is marked when it comes to be.
void MarkBelow(Node& top, bool checked)
{
    Node* node = &top;
    for (;;) {
        if (node->ChildPending()) node->SetPendingMark(checked);
        if (node->LoadedChild() != nullptr) {
            node = node->LoadedChild();
        } else {
            while (node != &top && node->Next() == nullptr)
                node = node->Parent();
            if (node == &top) return;
            node = node->Next();
        }
        node->WriteMarks(checked, false);
    }
}

}  // namespace

void TreeSelect::TreeSetChildren(Node& Node, bool bCheck, bool Recursive)
{
    Trapped(*m_module, VARIABLES(Node, bCheck, Recursive), [&](int& line) {
        if (Recursive) {
            MarkBelow(Node, bCheck);
            return;
        }
        for (class Node* child = Node.Child(); child != nullptr; child = child->Next()) {
            line = 2;
            if (child->Children() < 1) child->WriteMarks(bCheck, false);
        }
    });
}

void TreeSelect::TreeSetParents(Node& Node, CheckState state)
{
    auto nCheck = static_cast<long>(state);
    Trapped(*m_module, VARIABLES(Node, nCheck), [&](int& line) {
        InTreeSetParent() = true;
        if (Node.Parent() == nullptr) return;  // the flag stays set: no list is built for a tick on a root
        for (class Node* parent = Node.Parent(); parent != nullptr; parent = parent->Parent()) {
            line = 2;
            parent->WriteMarks(state == CheckState::Checked, state == CheckState::Mixed);
            line = 3;
            if (state == CheckState::Mixed) continue;
            state = StateOfRow(*parent);
            nCheck = static_cast<long>(state);
        }
        line = 4;
        InTreeSetParent() = false;
    });
}

bool TreeSelect::TreeCheckSibling(Node& Node, bool bCheck)
{
    return Trapped(*m_module, VARIABLES(Node, bCheck), [&] {
        for (class Node* sibling = Node.FirstSibling(); sibling != nullptr; sibling = sibling->Next())
            if (sibling->Bold() || sibling->Checked() != bCheck) return false;
        return true;
    });
}

/// The state that a node and its siblings give to their parent.
CheckState TreeSelect::StateOfRow(Node& node)
{
    return TreeCheckSibling(node, node.Checked()) ? StateOf(node.Checked()) : CheckState::Mixed;
}

void TreeSelect::LostChild(Node& folder)
{
    if (!Recursive()) return ClearEmptied(folder);
    if (Node* child = folder.Child()) return TreeSetParents(*child, StateOfRow(*child));
    if (folder.Bold()) folder.WriteMarks(false, false);
    if (folder.Parent() != nullptr) TreeSetParents(folder, StateOfRow(folder));
}

void TreeSelect::GainedChild(Node& moved)
{
    if (!Recursive() && !IsMarked(moved)) return;
    TreeSetParents(moved, Recursive() ? StateOfRow(moved) : CheckState::Mixed);
}

/// Where a tick stands for one folder only, what was mixed for the sake of the lost child is mixed no more.
void TreeSelect::ClearEmptied(Node& folder)
{
    for (Node* at = &folder; at != nullptr && at->Bold() && !at->Checked(); at = at->Parent()) {
        for (const Node* child = at->Child(); child != nullptr; child = child->Next())
            if (IsMarked(*child)) return;
        at->WriteMarks(false, false);
    }
}

}  // namespace sylvex
