#include "navigation/way_down.h"

#include "diagnostics/message_box.h"

namespace sylvex {

WayDown::WayDown(const Context& context, FolderTree& tree, MManipulateMsgBox& boxes, Owner owner,
                 const std::wstring& pText)
    : m_context(context),
      m_boxes(boxes),
      m_owner(owner),
      m_pText(pText),
      m_search(context, tree),
      m_descent(m_search.To(pText))
{
}

ChildOnPath WayDown::Step(Node& pNode, int& line)
{
    const NodeRef node(&pNode);
    if (!m_hidden && !pNode.Expanded()) m_hidden.emplace(m_context.TV);
    pNode.SetExpanded(true);
    line = 2;
    const ChildOnPath next = m_search.Towards(*node, m_descent);
    line = 3;
    if (next.child != nullptr && !next.isTarget) return next;
    if (m_hidden) m_hidden->End();
    if (next.child == nullptr) TellNotPresent();
    return next;
}

void WayDown::TellNotPresent()
{
    const WindowHandle tree = m_context.TV.hWnd();
    const WindowHandle owner = m_owner == Owner::Tree ? tree : m_context.platform.windows.TopLevelOf(tree);
    bool ticked = false;
    m_boxes.MessageBox(owner, m_pText + L" is not present on current FileSystem!", kBoxOk, {}, true, {}, ticked);
}

}  // namespace sylvex
