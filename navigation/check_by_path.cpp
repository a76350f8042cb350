#include "navigation/check_by_path.h"

#include "platform/text.h"

namespace sylvex {

CheckByPath::CheckByPath(const Context& context, FolderTree& tree, const FileList& list, TreeViewEvents& events,
                         MManipulateMsgBox& boxes, NavigationState& state)
    : m_context(context),
      m_tree(tree),
      m_list(list),
      m_events(events),
      m_boxes(boxes),
      m_state(state),
      m_search(context, tree)
{
}

void CheckByPath::SetNodeChecked(bool bState, bool bBuildList)
{
    std::wstring Path;
    Trapped(m_context.module, VARIABLES(bState, bBuildList), VARIABLES(Path), [&](int& line) {
        m_state.InSetNodeChecked = !bBuildList;
        line = 2;
        const auto text = m_list.Bound()->SelectedCell(0);
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
        m_state.InSetNodeChecked = false;
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
    WayDown way(m_context, m_tree, m_boxes, WayDown::Owner::Form, pText);
    NodeRef node(&pNode);
    // What is looked for deeper down counts as found.
    short missing = 0;
    for (bool isFirst = true; node; isFirst = false) {
        const ChildOnPath next = StepDown(*node, pText, bState, way);
        if (isFirst && next.child == nullptr) missing = 1;
        node = next.isTarget ? NodeRef() : NodeRef(next.child);
    }
    return missing;
}

/// One level of the way down; ticks the child that is the target.
ChildOnPath CheckByPath::StepDown(Node& pNode, const std::wstring& pText, bool bState, WayDown& way)
{
    const NodeRef node(&pNode);
    const auto parameters = Variables("pNode,pText,bState", node, pText, bState);
    return Trapped(m_context.module, L"DrillDownNodeCheck", parameters, [&](int& line) {
        const ChildOnPath next = way.Step(*node, line);
        line = 4;
        if (next.isTarget) Check(*next.child, bState);
        return next;
    });
}

}  // namespace sylvex
