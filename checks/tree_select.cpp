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

constexpr long kChecked = -1;
constexpr long kUnchecked = 0;
constexpr long kMixed = 1;

long Widened(bool checked)
{
    return checked ? kChecked : kUnchecked;
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
            TreeSetParents(Node, kMixed);
        } else if (Recursive) {
            line = 5;
            TreeSetParents(Node, Widened(Node.Checked()));
        } else {
            // Without recursion a tick stands for one folder only, so the branch above is never wholly selected.
            line = 6;
            Node.SetBold(true);
            TreeSetParents(Node, kMixed);
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

void TreeSelect::TreeSetParents(Node& Node, long nCheck)
{
    Trapped(*m_module, VARIABLES(Node, nCheck), [&](int& line) {
        InTreeSetParent() = true;
        if (Node.Parent() == nullptr) return;  // the flag stays set: no list is built for a tick on a root
        for (class Node* parent = Node.Parent(); parent != nullptr; parent = parent->Parent()) {
            line = 2;
            if (nCheck == kChecked || nCheck == kUnchecked || nCheck == kMixed)
                parent->WriteMarks(nCheck == kChecked, nCheck == kMixed);
            line = 3;
            if (nCheck == kMixed) continue;
            nCheck = TreeCheckSibling(*parent, parent->Checked()) ? Widened(parent->Checked()) : kMixed;
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

}  // namespace sylvex
