#include "control/sylvex.h"

// What the person does with mouse, Escape and labels: dragging and renaming, then the host's event.

namespace sylvex {

namespace {

constexpr short kEscape = 27;

}  // namespace

void Sylvex::TV_KeyPress(short& KeyAscii)
{
    Trapped(m_instance, L"TV_KeyPress", VARIABLES(KeyAscii), kNone, [&](int& line) {
        if (KeyAscii == kEscape && m_drag.Dragging()) {
            line = 1;
            m_drag.Escape();
        }
        line = 2;
        m_events.KeyPress(KeyAscii);
    });
}

void Sylvex::TV_KeyUp(short& KeyCode, short Shift)
{
    Trapped(m_instance, L"TV_KeyUp", VARIABLES(KeyCode, Shift), kNone, [&](int& line) {
        if (KeyCode == kEscape) {
            line = 1;
            Node* selected = m_instance.TV.SelectedItem();
            if (selected == nullptr) throw ObjectNotSet();
            if (!m_drag.TakeEscape()) m_rename.PutBack(*selected);
        }
        line = 2;
        m_events.KeyUp(KeyCode, Shift);
    });
}

void Sylvex::TV_MouseDown(short Button, short Shift, Point where)
{
    Trapped(m_instance, L"TV_MouseDown", VARIABLES(Button, Shift, where.x, where.y), kNone, [&](int& line) {
        line = 1;
        m_drag.Pressed(Button, where);
        line = 2;
        m_events.MouseDown(Button, Shift, where);
    });
}

void Sylvex::TV_MouseMove(short Button, short Shift, Point where)
{
    Trapped(m_instance, L"TV_MouseMove", VARIABLES(Button, Shift, where.x, where.y), kNone, [&](int& line) {
        line = 1;
        m_drag.Moved(Button);
        line = 2;
        m_events.MouseMove(Button, Shift, where);
    });
}

void Sylvex::TV_MouseUp(short Button, short Shift, Point where)
{
    DropLocals drop;
    const auto& [hitemDest, DropSource, DropDestin] = drop;
    Trapped(m_instance, L"TV_MouseUp", VARIABLES(Button, Shift, where.x, where.y),
            VARIABLES(hitemDest, DropSource, DropDestin), [&](int& line) {
                m_drop.Released(where, drop, line);
                line = 11;
                m_events.MouseUp(Button, Shift, where);
            });
}

void Sylvex::TV_BeforeLabelEdit(bool& Cancel)
{
    Trapped(m_instance, L"TV_BeforeLabelEdit", VARIABLES(Cancel), kNone, [&](int& line) {
        line = 1;
        m_rename.BeforeLabelEdit();
    });
}

void Sylvex::TV_AfterLabelEdit(bool& Cancel, const std::wstring& NewString)
{
    RenameLocals rename;
    const auto& [i, Temp, Success] = rename;
    Trapped(m_instance, L"TV_AfterLabelEdit", VARIABLES(Cancel, NewString), VARIABLES(i, Temp, Success),
            [&](int& line) {
                line = 1;
                m_rename.AfterLabelEdit(Cancel, NewString, rename, line);
            });
}

}  // namespace sylvex
