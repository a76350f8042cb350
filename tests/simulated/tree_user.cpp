#include "tests/simulated/tree_user.h"

#include <cstdlib>
#include <stdexcept>

#include "tests/simulated/text.h"

namespace sylvex {

namespace {

constexpr unsigned kOnLabelOrIcon = 6;
constexpr unsigned kOnButton = 0x10;
constexpr unsigned kOnBox = 0x40;
constexpr unsigned kOnRight = 0x20;

enum Key : short {
    kSpace = 0x20,
    kLeft = 0x25,
    kUp = 0x26,
    kRight = 0x27,
    kDown = 0x28,
    kPlus = 0x6B,
    kMinus = 0x6D,
    kF2 = 0x71
};

short CharacterOf(short key, short shift)
{
    if (key >= 'A' && key <= 'Z') return static_cast<short>((shift & 1) != 0 ? key : key + 32);
    const bool plain = (key >= '0' && key <= '9') || key == kSpace || key == 27 || key == 13 || key == 9 || key == 8;
    return plain ? key : short{0};
}

}  // namespace

bool TreeUser::Ignored() const
{
    return !m_tree.TakesInput();
}

Point TreeUser::MiddleOf(ItemHandle item, RowPart part) const
{
    const Rect place = m_tree.RectOf(item, part);
    if (place == Rect{}) throw std::logic_error("the row is not shown, or has no such part");
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

void TreeUser::Click(ItemHandle item, RowPart part, short shift)
{
    Press(MiddleOf(item, part), 1, shift);
    Release(shift);
}

void TreeUser::Press(Point where, short button, short shift)
{
    m_tree.Machine().SetCursor(m_tree.ToScreen(where));
    m_at = m_pressed = where;
    m_button = button;
    m_pressedLabel = 0;
    if (Ignored()) return;
    m_tree.FinishEdit(std::nullopt);
    m_tree.Listener().MouseDown(button, shift, where);
    if (button == 1) ActOnPress(m_tree.HitAt(where));
}

void TreeUser::ActOnPress(const TreeHit& hit)
{
    const bool fullRow = m_tree.Setting(TreeSetting::FullRowSelect) != 0;
    const unsigned selecting = kOnLabelOrIcon | (fullRow ? kOnRight : 0);
    const TreeRow* const row = m_tree.Find(hit.item);
    if (row == nullptr) return;
    if ((hit.flags & kOnButton) != 0) m_tree.OpenOrClose(hit.item, !row->expanded);
    if ((hit.flags & kOnBox) != 0) m_tree.Listener().CheckClicked(hit.data);
    if ((hit.flags & selecting) != 0) m_pressedLabel = hit.item;
}

void TreeUser::MoveTo(Point where, short shift)
{
    m_tree.Machine().SetCursor(m_tree.ToScreen(where));
    m_at = where;
    const auto moved = [this](int metric, int distance) {
        return std::abs(distance) >= m_tree.Machine().MetricValue(metric);
    };
    if (moved(68, where.x - m_pressed.x) || moved(69, where.y - m_pressed.y)) m_pressedLabel = 0;
    if (!Ignored()) m_tree.Listener().MouseMove(m_button, shift, where);
}

void TreeUser::Release(short shift)
{
    const short button = std::exchange(m_button, short{0});
    const ItemHandle item = std::exchange(m_pressedLabel, 0);
    if (Ignored()) return;
    const TreeRow* const row = m_tree.Find(item);
    if (row != nullptr && item == m_tree.Selection()) m_tree.Listener().Clicked(row->data);
    if (row != nullptr && item != m_tree.Selection()) m_tree.SelectRow(item, true);
    m_tree.Listener().MouseUp(button, shift, m_at);
}

void TreeUser::PressKey(short key, short shift)
{
    if (Ignored()) return;
    TreeWindowListener& listener = m_tree.Listener();
    short down = key;
    listener.KeyDown(down, shift);
    if (down != 0) ActOnKey(down);
    if (short character = CharacterOf(key, shift); character != 0) listener.KeyPress(character);
    short up = key;
    listener.KeyUp(up, shift);
}

void TreeUser::SelectByKey(ItemHandle item)
{
    if (item != 0) m_tree.SelectRow(item, true);
}

void TreeUser::ActOnKey(short key)
{
    const ItemHandle item = m_tree.Selection();
    const TreeRow* const row = m_tree.Find(item);
    if (row == nullptr) return;
    const int line = m_tree.LineOf(*row);
    const bool boxes = m_tree.Setting(TreeSetting::Checkboxes) != 0;
    const ItemHandle inside = row->firstChild == nullptr ? 0 : row->firstChild->handle;
    switch (key) {
        case kSpace:
            if (boxes) m_tree.Listener().CheckClicked(row->data);
            return;
        case kUp:
            return SelectByKey(line == 0 ? 0 : m_tree.RowAt(line - 1));
        case kDown:
            return SelectByKey(m_tree.RowAt(line + 1));
        case kLeft:
            if (!row->expanded) return SelectByKey(row->parent->handle);
            m_tree.OpenOrClose(item, false);
            return;
        case kRight:
            if (row->expanded) return SelectByKey(inside);
            m_tree.OpenOrClose(item, true);
            return;
        case kF2:
            if (m_tree.Setting(TreeSetting::LabelEdit) == 0) m_tree.BeginEdit(item);
            return;
        case kPlus:
        case kMinus:
            m_tree.OpenOrClose(item, key == kPlus);
            return;
        default:
            return;
    }
}

void TreeUser::BeginLabel(ItemHandle item)
{
    if (item != m_tree.Selection()) throw std::logic_error("only a selected label opens at a click");
    ClickRow(item);
    if (m_tree.Setting(TreeSetting::LabelEdit) == 0 && !Ignored()) m_tree.BeginEdit(item);
}

void TreeUser::TypeLabel(const std::wstring& text)
{
    if (m_tree.Editing() == 0) throw std::logic_error("no label is open");
    m_tree.FinishEdit(text);
}

void TreeUser::AbandonLabel()
{
    if (m_tree.Editing() == 0) throw std::logic_error("no label is open");
    m_tree.FinishEdit(std::nullopt);
}

}  // namespace sylvex
