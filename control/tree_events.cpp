#include "control/sylvex.h"

// What happens in the tree: the subsystems act on it, and the host hears of it.

namespace sylvex {

namespace {

constexpr short kEscape = 27;

}  // namespace

void Sylvex::TV_Expand(Node& Node)
{
    bool blnChecked = false;
    std::wstring SearchString;
    const NodeRef node(&Node);
    const auto locals = VARIABLES(blnChecked, SearchString);
    Trapped(m_state, Variables("Node", node), locals, [&](int& line) {
        if (m_state.tree.InClear) return;
        line = 2;
        m_events.Expand(Node);
        line = 3;
        if (m_tree.IsArriving(*node)) return;
        blnChecked = node->Checked();
        line = 4;
        m_tree.LoadChildren(*node);
        if (m_state.navigation.InSetNodeChecked || !m_list.IsBound()) return;
        line = 5;
        // What is written over at once need not be read from the list.
        if (node->Bold() || !m_checks.Recursive()) m_list.MarkListed(node, SearchString);
        line = 6;
        if (!node->Bold()) m_checks.TreeSelectiveCheck(*node, m_checks.Recursive());
    });
}

void Sylvex::TV_NodeCheck(Node& Node)
{
    const NodeRef node(&Node);
    Trapped(m_state, Variables("Node", node), [&](int& line) {
        if (m_state.tree.InClear) return;
        line = 2;
        m_checks.TreeSelectiveCheck(Node, m_checks.Recursive());
        line = 3;
        m_list.Rebuild(line, !m_state.navigation.InSetNodeChecked && !InTreeSetParent());
        line = 6;
        m_events.NodeCheck(*node);
    });
}

void Sylvex::TV_Collapse(Node& Node)
{
    Trapped(m_state, VARIABLES(Node), [&] { m_events.Collapse(Node); });
}

void Sylvex::TV_NodeClick(Node& Node)
{
    Trapped(m_state, VARIABLES(Node), [&] { m_events.NodeClick(Node); });
}

void Sylvex::TV_DblClick()
{
    Trapped(m_state, [&] { m_events.DblClick(); });
}

void Sylvex::TV_KeyDown(short& KeyCode, short Shift)
{
    Trapped(m_state, VARIABLES(KeyCode, Shift), [&] { m_events.KeyDown(KeyCode, Shift); });
}

void Sylvex::TV_KeyPress(short& KeyAscii)
{
    Trapped(m_state, VARIABLES(KeyAscii), [&](int& line) {
        if (KeyAscii == kEscape && m_drag.Dragging()) {
            m_drag.Escape();
        }
        line = 2;
        m_events.KeyPress(KeyAscii);
    });
}

void Sylvex::TV_KeyUp(short& KeyCode, short Shift)
{
    Trapped(m_state, VARIABLES(KeyCode, Shift), [&](int& line) {
        if (KeyCode == kEscape) {
            Node* selected = m_TV.SelectedItem();
            if (selected == nullptr) throw ObjectNotSet();
            if (!m_drag.TakeEscape()) m_rename.PutBack(*selected);
        }
        line = 2;
        m_events.KeyUp(KeyCode, Shift);
    });
}

void Sylvex::TV_MouseDown(short Button, short Shift, Point where)
{
    Trapped(m_state, VARIABLES(Button, Shift, where.x, where.y), [&](int& line) {
        m_drag.Pressed(Button, where);
        line = 2;
        m_events.MouseDown(Button, Shift, where);
    });
}

void Sylvex::TV_MouseMove(short Button, short Shift, Point where)
{
    Trapped(m_state, VARIABLES(Button, Shift, where.x, where.y), [&](int& line) {
        m_drag.Moved(Button);
        line = 2;
        m_events.MouseMove(Button, Shift, where);
    });
}

void Sylvex::TV_MouseUp(short Button, short Shift, Point where)
{
    DropLocals drop;
    const auto& [hitemDest, DropSource, DropDestin] = drop;
    Trapped(m_state, VARIABLES(Button, Shift, where.x, where.y), VARIABLES(hitemDest, DropSource, DropDestin),
            [&](int& line) {
                m_drop.Released(where, drop, line);
                line = 11;
                m_events.MouseUp(Button, Shift, where);
            });
}

void Sylvex::TV_BeforeLabelEdit(bool& Cancel)
{
    Trapped(m_state, VARIABLES(Cancel), [&] { m_rename.BeforeLabelEdit(); });
}

void Sylvex::TV_AfterLabelEdit(bool& Cancel, const std::wstring& NewString)
{
    RenameLocals rename;
    const auto& [i, Temp, Success] = rename;
    Trapped(m_state, VARIABLES(Cancel, NewString), VARIABLES(i, Temp, Success),
            [&](int& line) { m_rename.AfterLabelEdit(Cancel, NewString, rename, line); });
}

}  // namespace sylvex
