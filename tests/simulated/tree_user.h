#pragma once

#include <string>
#include <vector>

#include "tests/simulated/simulated_tree.h"

namespace sylvex {

/// The hands of a user at a simulated tree: mouse and keyboard, with the notices in the order in which a real tree
/// sends them. A row to be used must be shown and have the part in question, otherwise std::logic_error is raised.
/// A hidden or disabled tree ignores its user.
class TreeUser {
public:
    explicit TreeUser(SimulatedTree& tree) : m_tree(tree) {}

    /// A full left click on the row's label, expand button or check box.
    void ClickRow(ItemHandle item, short shift = 0) { Click(item, RowPart::Label, shift); }
    void ClickButton(ItemHandle item) { Click(item, RowPart::Button, 0); }
    void ClickCheck(ItemHandle item) { Click(item, RowPart::Box, 0); }

    /// The pointer in client pixels; the desktop's cursor goes with it.
    void Press(Point where, short button = 1, short shift = 0);
    void MoveTo(Point where, short shift = 0);
    void Release(short shift = 0);
    /// The middle of a part of a row.
    Point MiddleOf(ItemHandle item, RowPart part = RowPart::Label) const;

    /// Presses and releases a key by its virtual code; letters, digits, space, Esc, Enter, Tab and Backspace also give
    /// their character. Arrows, + and - of the number pad, F2 and the space bar act on the tree unless swallowed.
    void PressKey(short key, short shift = 0);

    /// Clicks a label that is selected: opens label editing when the tree's setting allows it.
    void BeginLabel(ItemHandle item);
    /// Types into the open label and presses Enter, or Esc.
    void TypeLabel(const std::wstring& text);
    void AbandonLabel();

private:
    void Click(ItemHandle item, RowPart part, short shift);
    void ActOnPress(const TreeHit& hit);
    void ActOnKey(short key);
    void SelectByKey(ItemHandle item);
    bool Ignored() const;
    SimulatedTree& m_tree;
    Point m_pressed;
    Point m_at;
    short m_button = 0;
    ItemHandle m_pressedLabel = 0;
};

}  // namespace sylvex
