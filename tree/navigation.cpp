#include "tree/navigation.h"

#include <optional>
#include <vector>

#include "diagnostics/message_box.h"
#include "platform/text.h"

namespace sylvex {

Navigation::Navigation(Instance& instance, FolderTree& tree, MManipulateMsgBox& boxes)
    : m_instance(instance), m_tree(tree), m_boxes(boxes), m_search(instance, tree)
{
}

bool Navigation::FileExistsW32FD(const std::wstring& sSource, FileEntry& W32FD)
{
    return Trapped(m_instance, L"FileExistsW32FD", VARIABLES(sSource, W32FD), kNone, [&](int& line) {
        line = 1;
        if (!m_instance.platform.network.Answers(sSource)) return false;
        line = 2;
        const auto search = m_instance.platform.files.Search(sSource);
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
    Trapped(m_instance, L"SetNodeVisible", kNone, VARIABLES(qPath, L4, sFullPath), [&](int& line) {
        line = 1;
        qPath = m_tree.QualifyPath(m_instance.m_Path);
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
        m_instance.TV.Refresh();
    });
}

/// Selects the node and scrolls it into view, its ancestors opened.
void Navigation::Show(Node& node)
{
    const NodeRef shown(&node);
    m_instance.TV.SetSelectedItem(&node);
    shown->EnsureVisible();
}

/// Whether a row with this text in its type column stands for a folder.
bool Navigation::IsFolderRow(const std::wstring& typ) const
{
    return !typ.empty() && EqualText(m_instance.platform.regional, typ, m_instance.sFolder);
}

void Navigation::SetNode()
{
    std::wstring sText, typ;
    Trapped(m_instance, L"SetNode", kNone, VARIABLES(sText, typ), [&](int& line) {
        line = 1;
        const auto list = m_instance.BoundList();
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
    std::optional<TreeView::Updating> hidden;
    Descent descent = m_search.To(pText);
    NodeRef node(&pNode);
    while (Node* const next = StepDown(*node, pText, descent, hidden))
        node = NodeRef(next);
}

/// One level of the way down: opens the node, and gives the child that the way goes on through, null at its end.
Node* Navigation::StepDown(Node& pNode, const std::wstring& pText, Descent& descent,
                           std::optional<TreeView::Updating>& hidden)
{
    const NodeRef node(&pNode);
    NodeRef nod;
    const auto parameters = Variables("pNode,pText", node, pText);
    return Trapped(m_instance, L"DrillDownNode", parameters, VARIABLES(nod), [&](int& line) -> Node* {
        line = 1;
        // One paint for all levels that open.
        if (!hidden && !pNode.Expanded()) hidden.emplace(m_instance.TV);
        pNode.SetExpanded(true);
        line = 2;
        const ChildOnPath next = m_search.Towards(*node, descent);
        line = 3;
        nod = NodeRef(next.child);
        if (next.child != nullptr && !next.isTarget) return next.child;
        if (hidden) hidden->End();
        if (next.child == nullptr) {
            TellNotPresent(m_boxes, m_instance.TV.hWnd(), pText);
        } else {
            line = 4;
            Show(*next.child);
        }
        return nullptr;
    });
}

void TellNotPresent(MManipulateMsgBox& boxes, WindowHandle owner, const std::wstring& path)
{
    bool ticked = false;
    boxes.MessageBox(owner, path + L" is not present on current FileSystem!", kBoxOk, {}, true, {}, ticked);
}

}  // namespace sylvex
