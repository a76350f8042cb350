#include "tests/support/hand.h"

#include "widgets/tree_messages.h"

namespace sylvex {

Rect Hand::LabelOf(Node& node)
{
    ControlState& state = m_scene.control().State();
    TreeMessages messages(state, m_scene.desk().Get().windows);
    Rect place;
    if (!messages.TreeView_GetItemRect(m_scene.control().Tree().hWnd(), m_scene.control().Tree().ItemOf(node), place,
                                       true))
        throw ElementNotFound();
    return place;
}

Point Hand::On(Node& node)
{
    const Rect label = LabelOf(node);
    return {label.left + 2, (label.top + label.bottom) / 2};  // some labels are a letter wide
}

void Hand::Drag(Node& from, Node& to)
{
    const Point start = On(from);
    m_tools->Press(start, 1);
    m_tools->MoveTo({start.x + m_scene.control().State().tree.m_szDrag.cx, start.y});
    const Point end = On(to);
    m_tools->MoveTo(end);
    m_tools->MoveTo({end.x + 1, end.y});
}

void Hand::Drop(Node& from, Node& to)
{
    Drag(from, to);
    m_tools->Release();
}

std::wstring Hand::Edit(Node& node)
{
    m_scene.control().Tree().SetSelectedItem(&node);
    m_tools->PressKey(kRenameKey);
    return m_tools->Label();
}

}  // namespace sylvex
