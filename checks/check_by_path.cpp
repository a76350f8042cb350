#include "checks/check_by_path.h"

#include "diagnostics/message_box.h"
#include "platform/text.h"
#include "tree/navigation.h"

namespace sylvex {

CheckByPath::CheckByPath(Instance& instance, FolderTree& tree, TreeViewEvents& events, MManipulateMsgBox& boxes)
    : m_instance(instance), m_events(events), m_boxes(boxes), m_search(instance, tree)
{
}

void CheckByPath::SetNodeChecked(bool bState, bool bBuildList)
{
    std::wstring Path;
    Trapped(m_instance, L"SetNodeChecked", VARIABLES(bState, bBuildList), VARIABLES(Path), [&](int& line) {
        line = 1;
        m_instance.InSetNodeChecked = !bBuildList;
        line = 2;
        const auto text = m_instance.BoundList()->SelectedCell(0);
        if (!text) return;  // the flag stays as it is
        line = 3;
        Path = *text;
        line = 4;
        if (Path.find_first_of(L"?*") != std::wstring::npos && !Path.ends_with(L'*'))
            Path = Path.substr(0, Path.rfind(L'\\') + 1) + L"*";
        line = 5;
        const std::vector<std::wstring> parts = SplitText(Path, L'\\');
        line = 6;
        if (!parts.empty()) CheckDrive(parts, Path, bState);
        line = 7;
        m_instance.InSetNodeChecked = false;
    });
}

/// Ticks the drive that the path begins with, when it is the whole path, or goes on below it. Nothing when the tree has
/// no such drive.
void CheckByPath::CheckDrive(const std::vector<std::wstring>& parts, const std::wstring& Path, bool bState)
{
    Node* drive = m_search.First(parts[0] + L"\\");
    if (drive == nullptr) return;
    if (parts.size() < 2) throw SubscriptOutOfRange();
    if (parts[1] != L"*" || parts.size() > 2) {
        DrillDownNodeCheck(*drive, Path, bState);
    } else if (drive->Checked() != bState) {
        Check(*drive, bState);
    }
}

void CheckByPath::Check(Node& node, bool bState)
{
    node.SetChecked(bState);
    m_events.TV_NodeCheck(node);
}

short CheckByPath::DrillDownNodeCheck(Node& pNode, const std::wstring& pText, bool bState)
{
    std::optional<TreeView::Updating> hidden;
    Descent descent = m_search.To(pText);
    NodeRef node(&pNode);
    // What is looked for deeper down counts as found.
    short missing = 0;
    for (bool isFirst = true; node; isFirst = false) {
        const ChildOnPath next = StepDown(*node, pText, bState, descent, hidden);
        if (isFirst && next.child == nullptr) missing = 1;
        node = next.isTarget ? NodeRef() : NodeRef(next.child);
    }
    return missing;
}

/// One level of the way down: opens the node, and ticks the child that is the target or says that there is none.
ChildOnPath CheckByPath::StepDown(Node& pNode, const std::wstring& pText, bool bState, Descent& descent,
                                  std::optional<TreeView::Updating>& hidden)
{
    const NodeRef node(&pNode);
    const auto parameters = Variables("pNode,pText,bState", node, pText, bState);
    return Trapped(m_instance, L"DrillDownNodeCheck", parameters, kNone, [&](int& line) {
        line = 1;
        // One paint for all levels that open.
        if (!hidden && !pNode.Expanded()) hidden.emplace(m_instance.TV);
        pNode.SetExpanded(true);
        line = 2;
        const ChildOnPath next = m_search.Towards(*node, descent);
        line = 3;
        if (next.child != nullptr && !next.isTarget) return next;
        if (hidden) hidden->End();
        if (next.child == nullptr) {
            TellNotPresent(m_boxes, m_instance.platform.boxTools.TopLevelOf(m_instance.TV.hWnd()), pText);
        } else {
            line = 4;
            Check(*next.child, bState);
        }
        return next;
    });
}

}  // namespace sylvex
