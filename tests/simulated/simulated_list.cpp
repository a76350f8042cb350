#include "tests/simulated/simulated_list.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

#include "platform/tree_records.h"
#include "tests/simulated/text.h"

namespace sylvex {

namespace {

template <class Items>
auto& At(Items& items, int place, const char* call)
{
    if (place < 0 || place >= static_cast<int>(items.size())) {
        throw std::out_of_range(std::string(call) + ": no item " + std::to_string(place));
    }
    return items[static_cast<std::size_t>(place)];
}

std::wstring_view CellOf(const ListState::Row& row, std::size_t column)
{
    return column < row.cells.size() ? std::wstring_view(row.cells[column]) : std::wstring_view();
}

std::string WidthOf(const ListState::Column& column)
{
    static constexpr std::array endings{"", ",right", ",center"};
    return "(" + std::to_string(column.width) + endings[static_cast<std::size_t>(column.alignment)] + ")";
}

}  // namespace

ListState& SimulatedList::Enter(const char* call) const
{
    if (m_gate != nullptr) m_gate->Enter(call);
    if (m_state->gone) throw ObjectGone(L"The list view");
    return *m_state;
}

ListState& SimulatedList::Change(const char* call) const
{
    ListState& state = Enter(call);
    if (state.visible && state.redraw) ++state.exposedChanges;
    return state;
}

ListState::Row& SimulatedList::Row(int row, const char* call) const
{
    return At(Enter(call).rows, row, call);
}

ListState::Column& SimulatedList::Column(int column, const char* call) const
{
    return At(Enter(call).columns, column, call);
}

std::string SimulatedList::Render() const
{
    std::string text = m_state->visible ? m_state->redraw ? "" : "(frozen)\n" : "(hidden)\n";
    for (const ListState::Row& row : m_state->rows) {
        if (row.selected) text += "> ";
        if (row.checked) text += "[x] ";
        const char* joint = "";
        for (std::size_t column = 0; column < m_state->columns.size(); ++column) {
            if (m_state->columns[column].width <= 0) continue;
            text += joint + OneLine(CellOf(row, column));
            joint = " | ";
        }
        text += '\n';
    }
    return text;
}

std::string SimulatedList::RenderColumns() const
{
    std::string text;
    for (const ListState::Column& column : m_state->columns) {
        text += (text.empty() ? "" : " | ") + OneLine(column.caption) + WidthOf(column);
    }
    return text;
}

std::intptr_t SimulatedList::OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
{
    constexpr unsigned kSetRedraw = 11;
    constexpr unsigned kSetImageList = 4099;
    constexpr unsigned kSetItem = 4102;
    if (message == kSetRedraw) m_state->redraw = wParam != 0;
    if (message == kSetImageList && wParam < m_state->imageLists.size()) {
        const auto list = static_cast<ImageListHandle>(lParam);
        return static_cast<std::intptr_t>(std::exchange(m_state->imageLists[wParam], list));
    }
    if (message == kSetItem && lParam != 0) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): messages carry addresses
        const LVITEM& item = *reinterpret_cast<const LVITEM*>(lParam);
        if (item.iItem < 0 || item.iItem >= static_cast<int>(m_state->rows.size())) return 0;
        if ((item.mask & LVIF_IMAGE) != 0) m_state->rows[static_cast<std::size_t>(item.iItem)].image = item.iImage;
        return 1;
    }
    return 0;
}

int SimulatedList::RowCount()
{
    return static_cast<int>(Enter("ListWindow::RowCount").rows.size());
}

int SimulatedList::InsertRow(int row, const std::wstring& text, int image)
{
    auto& rows = Change("ListWindow::InsertRow").rows;
    const int place = std::clamp(row, 0, static_cast<int>(rows.size()));
    rows.insert(rows.begin() + place, ListState::Row{{text}, image, ++m_state->lastNumber, false, false});
    if (m_state->focused >= place) ++m_state->focused;
    return place;
}

void SimulatedList::DeleteRow(int row)
{
    auto& rows = Change("ListWindow::DeleteRow").rows;
    At(rows, row, "ListWindow::DeleteRow");
    rows.erase(rows.begin() + row);
    if (m_state->focused == row) m_state->focused = -1;
    if (m_state->focused > row) --m_state->focused;
}

void SimulatedList::ClearRows()
{
    Change("ListWindow::ClearRows").rows.clear();
    m_state->focused = -1;
}

std::wstring SimulatedList::Cell(int row, int column)
{
    return std::wstring(CellOf(Row(row, "ListWindow::Cell"), static_cast<std::size_t>(column)));
}

void SimulatedList::SetCell(int row, int column, const std::wstring& text)
{
    auto& cells = At(Change("ListWindow::SetCell").rows, row, "ListWindow::SetCell").cells;
    const auto place = static_cast<std::size_t>(column);
    if (place >= cells.size()) cells.resize(place + 1);
    cells[place] = text;
}

std::optional<std::uint32_t> SimulatedList::RowNumber(int row)
{
    const ListState::Row& asked = Row(row, "ListWindow::RowNumber");
    return m_state->numbersRows ? std::optional(asked.number) : std::nullopt;
}

void SimulatedList::SetRowImage(int row, int image)
{
    Row(row, "ListWindow::SetRowImage").image = image;
}

int SimulatedList::RowImage(int row)
{
    return Row(row, "ListWindow::RowImage").image;
}

int SimulatedList::SelectedRow()
{
    const ListState& state = Enter("ListWindow::SelectedRow");
    const auto selected = [&](int row) { return state.rows[static_cast<std::size_t>(row)].selected; };
    const int count = static_cast<int>(state.rows.size());
    if (state.focused >= 0 && state.focused < count && selected(state.focused)) return state.focused;
    for (int row = 0; row < count; ++row) {
        if (selected(row)) return row;
    }
    return -1;
}

bool SimulatedList::IsSelected(int row)
{
    return Row(row, "ListWindow::IsSelected").selected;
}

void SimulatedList::SelectRow(int row, bool selected)
{
    Row(row, "ListWindow::SelectRow").selected = selected;
    if (selected) m_state->focused = row;
}

bool SimulatedList::IsChecked(int row)
{
    return Row(row, "ListWindow::IsChecked").checked;
}

void SimulatedList::CheckRow(int row, bool checked)
{
    Row(row, "ListWindow::CheckRow").checked = checked;
}

void SimulatedList::EnsureVisible(int row)
{
    Row(row, "ListWindow::EnsureVisible");
}

int SimulatedList::ColumnCount()
{
    return static_cast<int>(Enter("ListWindow::ColumnCount").columns.size());
}

void SimulatedList::InsertColumn(int column, const std::wstring& caption, int width, Alignment alignment)
{
    auto& columns = Change("ListWindow::InsertColumn").columns;
    const int place = std::clamp(column, 0, static_cast<int>(columns.size()));
    columns.insert(columns.begin() + place, ListState::Column{caption, width, alignment});
}

void SimulatedList::DeleteColumn(int column)
{
    auto& columns = Change("ListWindow::DeleteColumn").columns;
    At(columns, column, "ListWindow::DeleteColumn");
    columns.erase(columns.begin() + column);
    for (ListState::Row& row : m_state->rows) {
        if (column < static_cast<int>(row.cells.size())) row.cells.erase(row.cells.begin() + column);
    }
}

void SimulatedList::SetColumn(int column, const std::wstring& caption, Alignment alignment)
{
    ListState::Column& changed = Column(column, "ListWindow::SetColumn");
    changed.caption = caption;
    changed.alignment = alignment;
}

int SimulatedList::ColumnWidth(int column)
{
    return Column(column, "ListWindow::ColumnWidth").width;
}

void SimulatedList::SetColumnWidth(int column, int width)
{
    Column(column, "ListWindow::SetColumnWidth").width = width;
}

std::vector<int> SimulatedList::Sort(int column, bool descending)
{
    auto& rows = Change("ListWindow::Sort").rows;
    const auto place = static_cast<std::size_t>(column);
    const ListState::Row* const focused =
        m_state->focused >= 0 ? &At(rows, m_state->focused, "ListWindow::Sort") : nullptr;
    std::vector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        const int result = CompareFolded(CellOf(At(rows, left, "Sort"), place), CellOf(At(rows, right, "Sort"), place));
        return descending ? result > 0 : result < 0;
    });
    std::vector<ListState::Row> sorted;
    for (const int former : order) {
        ListState::Row& row = At(rows, former, "ListWindow::Sort");
        if (&row == focused) m_state->focused = static_cast<int>(sorted.size());
        sorted.push_back(std::move(row));
    }
    rows = std::move(sorted);
    return order;
}

bool SimulatedList::Visible()
{
    return Enter("ListWindow::Visible").visible;
}

void SimulatedList::SetVisible(bool visible)
{
    Enter("ListWindow::SetVisible").visible = visible;
}

void SimulatedList::SetRedraw(bool redraw)
{
    Enter("ListWindow::SetRedraw").redraw = redraw;
}

void SimulatedList::Refresh()
{
    ++Enter("ListWindow::Refresh").refreshes;
}

int SimulatedList::PixelsOf(double twips)
{
    Enter("ListWindow::PixelsOf");
    return static_cast<int>(std::lround(twips / 15));
}

}  // namespace sylvex
