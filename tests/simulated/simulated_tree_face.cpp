// Where a simulated tree shows its rows, and what they look like.

#include <algorithm>

#include "tests/simulated/simulated_tree.h"
#include "tests/simulated/text.h"

namespace sylvex {

namespace {

// The platform's flags of a hit test, by part of a row from left to right.
unsigned FlagOf(RowPart part)
{
    switch (part) {
        case RowPart::Indent:
            return 8;
        case RowPart::Button:
            return 0x10;
        case RowPart::Box:
            return 0x40;
        case RowPart::Icon:
            return 2;
        case RowPart::Label:
            return 4;
        default:
            return 0x20;
    }
}

constexpr std::uint32_t kHorizontalBar = 0x100000;
constexpr std::uint32_t kVerticalBar = 0x200000;
constexpr unsigned kNowhere = 1;
constexpr unsigned kAbove = 0x100;
constexpr unsigned kBelow = 0x200;
constexpr unsigned kToRight = 0x400;
constexpr unsigned kToLeft = 0x800;

}  // namespace

TreeRow* SimulatedTree::NextShown(const TreeRow& row) const
{
    if (row.expanded && row.firstChild != nullptr) return row.firstChild;
    const TreeRow* at = &row;
    while (at != nullptr && at->next == nullptr)
        at = at->parent;
    return at == nullptr ? nullptr : at->next;
}

bool SimulatedTree::IsShown(const TreeRow& row) const
{
    const TreeRow* above = row.parent;
    while (above != nullptr && above->expanded)
        above = above->parent;
    return above == nullptr;
}

int SimulatedTree::LineOf(const TreeRow& row) const
{
    int line = 0;
    for (const TreeRow* at = m_top.firstChild; at != &row; at = NextShown(*at))
        ++line;
    return line;
}

int SimulatedTree::LevelOf(const TreeRow& row) const
{
    int level = 0;
    for (const TreeRow* above = row.parent; above != &m_top; above = above->parent)
        ++level;
    return level;
}

ItemHandle SimulatedTree::RowAt(int line) const
{
    const TreeRow* row = m_top.firstChild;
    for (; row != nullptr && line > 0; --line)
        row = NextShown(*row);
    return row == nullptr ? 0 : row->handle;
}

ItemHandle SimulatedTree::Row(std::wstring_view text) const
{
    const TreeRow* row = m_top.firstChild;
    while (row != nullptr && row->text != text) {
        if (row->firstChild != nullptr) {
            row = row->firstChild;
            continue;
        }
        while (row != nullptr && row->next == nullptr)
            row = row->parent;
        if (row != nullptr) row = row->next;
    }
    return row == nullptr ? 0 : row->handle;
}

int SimulatedTree::LeftOf(const TreeRow& row, RowPart part) const
{
    const int box = Setting(TreeSetting::Checkboxes) != 0 ? kBoxWidth : 0;
    const int icon = m_images != 0 ? kIconWidth : 0;
    const int rootLines = Setting(TreeSetting::LineStyle);
    const int start = (LevelOf(row) + rootLines) * kLevelWidth;
    switch (part) {
        case RowPart::Indent:
            return 0;
        case RowPart::Button:
            return std::max(start - kLevelWidth, 0);
        case RowPart::Box:
            return start;
        case RowPart::Icon:
            return start + box;
        case RowPart::Label:
            return start + box + icon;
        default:
            return start + box + icon + 4 + 7 * static_cast<int>(row.text.size());
    }
}

Rect SimulatedTree::RectOf(ItemHandle item, RowPart part) const
{
    const TreeRow* const row = Find(item);
    if (row == nullptr || !IsShown(*row)) return {};
    if (part == RowPart::Button && !ShowsButton(*row)) return {};
    const int top = (LineOf(*row) - m_firstLine) * kRowHeight;
    const int left = LeftOf(*row, part) - m_scrolledRight;
    const int open = std::max(m_place.right - m_place.left, left + 100);
    const auto next = static_cast<RowPart>(static_cast<int>(part) + 1);
    const int right = part == RowPart::Right ? open : LeftOf(*row, next) - m_scrolledRight;
    return left == right ? Rect{} : Rect{left, top, right, top + kRowHeight};
}

Point SimulatedTree::ToScreen(Point client) const
{
    return {kOrigin.x + m_place.left + client.x, kOrigin.y + m_place.top + client.y};
}

unsigned SimulatedTree::FlagsAt(const TreeRow& row, int x) const
{
    for (const RowPart part : {RowPart::Right, RowPart::Label, RowPart::Icon, RowPart::Box, RowPart::Button}) {
        if (x < LeftOf(row, part)) continue;
        const bool missing = part == RowPart::Button && !ShowsButton(row);
        return FlagOf(missing ? RowPart::Indent : part);
    }
    return FlagOf(RowPart::Indent);
}

TreeHit SimulatedTree::HitAt(Point where) const
{
    const int width = m_place.right - m_place.left;
    const int height = m_place.bottom - m_place.top;
    unsigned outside = where.y < 0 ? kAbove : height > 0 && where.y >= height ? kBelow : 0;
    outside |= where.x < 0 ? kToLeft : width > 0 && where.x >= width ? kToRight : 0;
    if (outside != 0) return {0, 0, outside};
    const TreeRow* const row = Find(RowAt(where.y / kRowHeight + m_firstLine));
    if (row == nullptr) return {0, 0, kNowhere};
    return {row->handle, row->data, FlagsAt(*row, where.x + m_scrolledRight)};
}

ScrollBar SimulatedTree::BarOf(int bar) const
{
    int lines = 0;
    int width = 0;
    for (const TreeRow* row = m_top.firstChild; row != nullptr; row = NextShown(*row)) {
        ++lines;
        width = std::max(width, LeftOf(*row, RowPart::Right));
    }
    const int page = bar == 0 ? m_place.right - m_place.left : (m_place.bottom - m_place.top) / kRowHeight;
    const int most = std::max((bar == 0 ? width : lines) - 1, 0);
    return {0, most, static_cast<unsigned>(std::max(page, 0)), bar == 0 ? m_scrolledRight : m_firstLine};
}

std::uint32_t SimulatedTree::BarStyle() const
{
    const auto overflows = [this](int bar) {
        const ScrollBar state = BarOf(bar);
        return static_cast<unsigned>(state.most) >= state.page;
    };
    return (overflows(0) ? kHorizontalBar : 0) | (overflows(1) ? kVerticalBar : 0);
}

const RowMarks& SimulatedTree::Marks(TreeRow& row)
{
    if (row.paintedWhen != m_generation) {
        row.painted = m_listener.Marks(row.data);
        row.paintedWhen = m_generation;
    }
    return row.painted;
}

int SimulatedTree::ImageOf(TreeRow& row)
{
    if (row.fixedImage) return *row.fixedImage;
    if (row.handle == m_selected && row.selectedImage >= 0) return row.selectedImage;
    const int present = Marks(row).image;
    return present >= 0 ? present : row.image;
}

std::string SimulatedTree::PictureOf(ItemHandle item)
{
    TreeRow* const row = FindRow(item);
    return row == nullptr ? std::string() : m_windows.ImageLists().Picture(m_images, ImageOf(*row));
}

}  // namespace sylvex
