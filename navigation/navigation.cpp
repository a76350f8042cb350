#include "navigation/navigation.h"

#include <vector>

#include "platform/text.h"

namespace sylvex {

Navigation::Navigation(const Context& context, FolderTree& tree, const FileList& list, MManipulateMsgBox& boxes,
                       const NavigationState& state)
    : m_context(context), m_tree(tree), m_list(list), m_boxes(boxes), m_state(state), m_search(context, tree)
{
}

bool Navigation::FileExistsW32FD(const std::wstring& sSource, FileEntry& W32FD)
{
    return Trapped(m_context.module, VARIABLES(sSource, W32FD), [&](int& line) {
        if (!m_context.platform.network.Answers(sSource)) return false;
        line = 2;
        const auto search = m_context.platform.files.Search(sSource);
        if (search == nullptr) return false;
        W32FD = search->Entry();
        W32FD.name = W32FD.shortName = {};  // they go with the search
        return true;
    });
}

void Navigation::SetNodeVisible()
{
    std::wstring qPath, sFullPath;
    int L4 = 0;
    Trapped(m_context.module, kNone, VARIABLES(qPath, L4, sFullPath), [&](int& line) {
        qPath = m_tree.QualifyPath(m_state.m_Path);
        line = 2;
        NodeRef node = m_search.First(qPath);
        if (!node) return;
        L4 = node->KnownIndex();
        sFullPath = qPath;
        if (const NodeRef parent = node->Parent(); parent) {
            line = 3;
            parent->EnsureVisible();
            parent->SetExpanded(true);
            // A folder with one childless child has just been read again.
            if (!node) node = m_search.First(qPath);
            if (!node) return;
        }
        line = 4;
        Show(*node);
        line = 5;
        m_context.TV.Refresh();
    });
}

/// Selects the node and scrolls it into view, its ancestors opened.
void Navigation::Show(Node& node)
{
    const NodeRef shown(&node);
    m_context.TV.SetSelectedItem(&node);
    shown->EnsureVisible();
}

/// Whether a row with this text in its type column stands for a folder.
bool Navigation::IsFolderRow(const std::wstring& typ) const
{
    return !typ.empty() && EqualText(m_context.platform.regional, typ, m_list.FolderCaption());
}

void Navigation::SetNode()
{
    std::wstring sText, typ;
    Trapped(m_context.module, kNone, VARIABLES(sText, typ), [&](int& line) {
        const auto list = m_list.Bound();
        const auto text = list->SelectedCell(0);
        if (!text || !list->IsSelectedItemSelected()) return;
        line = 2;
        sText = *text;
        typ = list->SelectedCell(list->SubItemIndex(L"typ")).value_or(L"");
        line = 3;
        if (IsFolderRow(typ)) sText = sText.substr(0, sText.rfind(L'\\') + 1) + L"*";
        line = 4;
        const std::vector<std::wstring> parts = SplitText(sText, L'\\');
        if (parts.empty()) return;
        line = 5;
        Node* drive = m_search.First(parts[0] + L"\\");
        if (drive == nullptr) return;
        line = 6;
        const bool isRoot = parts.size() == 2 && (parts[1].empty() || parts[1] == L"*");
        isRoot ? Show(*drive) : DrillDownNode(*drive, sText);
    });
}

void Navigation::DrillDownNode(Node& pNode, const std::wstring& pText)
{
    WayDown way(m_context, m_tree, m_boxes, WayDown::Owner::Tree, pText);
    NodeRef node(&pNode);
    while (Node* const next = StepDown(*node, pText, way))
        node = NodeRef(next);
}

/// One level of the way down; gives the node that the way goes on through, null at its end.
Node* Navigation::StepDown(Node& pNode, const std::wstring& pText, WayDown& way)
{
    const NodeRef node(&pNode);
    NodeRef nod;
    const auto parameters = Variables("pNode,pText", node, pText);
    return Trapped(m_context.module, L"DrillDownNode", parameters, VARIABLES(nod), [&](int& line) -> Node* {
        const ChildOnPath next = way.Step(*node, line);
        nod = NodeRef(next.child);
        if (next.child != nullptr && !next.isTarget) return next.child;
        line = 4;
        if (next.child != nullptr) Show(*next.child);
        return nullptr;
    });
}

}  // namespace sylvex
