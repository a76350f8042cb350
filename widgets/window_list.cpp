#include "widgets/window_list.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/runtime_error.h"
#include "widgets/imagelist.h"

namespace sylvex {

namespace {

/// Marks of rows lie above this, where hosts' own numbers seldom are.
constexpr RowId kBelowMarks = 0x1000'0000;

/// The number of the mark given last. One for all lists, because the same window may be handed over twice.
std::atomic<RowId>& LastMark()
{
    static std::atomic<RowId> last = kBelowMarks;
    return last;
}

bool IsMark(std::intptr_t data)
{
    return data > kBelowMarks && data <= LastMark();
}

/// The stand-in for a mark of a row that has none; it is its own reverse.
constexpr std::intptr_t Unmarked(std::intptr_t place)
{
    return -1 - place;
}

}  // namespace

WindowListView::WindowListView(std::unique_ptr<ListWindow> window) : m_window(std::move(window)) {}

WindowHandle WindowListView::hWnd()
{
    // The handle alone would not tell that the window has gone.
    m_window->Visible();
    return m_window->Handle();
}

std::shared_ptr<Frozen> WindowListView::Freeze()
{
    // A second one would take the window for hidden, which some systems make of one that does not paint.
    std::shared_ptr<Frozen> frozen = m_frozen.lock();
    if (!frozen) m_frozen = frozen = std::make_shared<Frozen>(m_window);
    return frozen;
}

void WindowListView::ClearItems()
{
    m_window->ClearRows();
    // Letting go of the tags may run code of the host, which comes after everything else.
    const auto discarded = std::exchange(m_extras, {});
    m_keys.clear();
    m_places.clear();
    m_inOrder = -1;
}

void WindowListView::AddRows(RowSource& rows, bool sortFollows)
{
    const int before = m_window->RowCount();
    const bool inOrder = before == 0 && (sortFollows || (m_sorted && m_sortKey == 0));
    const std::vector<std::uint32_t> order = inOrder ? rows.SortedPlaces(m_descending) : std::vector<std::uint32_t>();
    const int count = static_cast<int>(rows.Count());
    m_inOrder = -1;
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i);
        WriteRow(before + i, rows.Row(inOrder ? order[place] : place));
    }
    if (inOrder) m_inOrder = count;
    if (!inOrder && m_sorted && !sortFollows) SortNow();
}

void WindowListView::WriteRow(int place, const ListRow& row)
{
    const int written = m_window->InsertRow(place, row.cells.front(), row.image, ++LastMark());
    for (std::size_t column = 1; column < row.cells.size(); ++column)
        if (!row.cells[column].empty()) m_window->SetCell(written, static_cast<int>(column), row.cells[column]);
}

void WindowListView::SortBy(int column)
{
    m_sortKey = column;
    m_sorted = true;
    if (column != 0 || m_inOrder != m_window->RowCount()) SortNow();
    m_inOrder = -1;
}

void WindowListView::SortNow()
{
    // A window that paints looks at its rows anew with each that is written to.
    const std::shared_ptr<Frozen> frozen = Freeze();
    m_window->Sort(m_sortKey, m_descending);
}

void WindowListView::SetSortKey(int column)
{
    if (column < 0) throw InvalidPropertyValue();
    m_inOrder = -1;
    m_sortKey = column;
    if (m_sorted) SortNow();
}

void WindowListView::SetDescending(bool descending)
{
    m_inOrder = -1;
    m_descending = descending;
    if (m_sorted) SortNow();
}

void WindowListView::SetSorted(bool sorted)
{
    m_inOrder = -1;
    m_sorted = sorted;
    if (sorted) SortNow();
}

std::vector<std::wstring> WindowListView::Texts()
{
    std::vector<std::wstring> texts(static_cast<std::size_t>(m_window->RowCount()));
    for (std::size_t place = 0; place < texts.size(); ++place)
        texts[place] = m_window->Cell(static_cast<int>(place), 0);
    return texts;
}

std::optional<std::wstring> WindowListView::SelectedCell(int column)
{
    const int place = m_window->SelectedRow();
    if (place < 0) return std::nullopt;
    return m_window->Cell(place, column);
}

RowId WindowListView::IdAt(int place)
{
    if (place < 0 || place >= m_window->RowCount()) throw IndexOutOfBounds();
    const std::intptr_t data = m_window->RowData(place);
    if (!IsMark(data)) return Unmarked(place);
    m_places[data] = place;
    return data;
}

int WindowListView::PlaceOf(RowId row)
{
    const int count = m_window->RowCount();
    if (row < 0) {
        const std::intptr_t place = Unmarked(row);
        if (place >= count || IsMark(m_window->RowData(static_cast<int>(place)))) throw NodeGone();
        return static_cast<int>(place);
    }
    const auto holds = [&](auto seen) {
        return seen != m_places.end() && seen->second < count && m_window->RowData(seen->second) == row;
    };
    auto seen = m_places.find(row);
    if (!holds(seen)) {
        FindPlaces();
        seen = m_places.find(row);
    }
    if (seen == m_places.end()) throw NodeGone();
    return seen->second;
}

/// Looks at every row, so that the next many questions need not.
void WindowListView::FindPlaces()
{
    m_places.clear();
    const int count = m_window->RowCount();
    for (int place = 0; place < count; ++place) {
        const std::intptr_t data = m_window->RowData(place);
        if (IsMark(data)) m_places[data] = place;
    }
}

int WindowListView::PlaceOf(const std::wstring& key)
{
    const auto found = m_keys.find(key);
    if (found == m_keys.end()) throw ElementNotFound();
    try {
        return PlaceOf(found->second);
    } catch (const RuntimeError& error) {
        if (error.number != NodeGone().number) throw;
        // The host has removed the row behind our back.
        const auto discarded = m_extras.extract(found->second);
        m_keys.erase(found);
        throw ElementNotFound();
    }
}

/// Raises the error for a key that the row may not have.
void WindowListView::CheckKey(const std::wstring& key, RowId row)
{
    if (IsNumeric(key)) throw InvalidKey();
    const auto found = m_keys.find(key);
    if (found == m_keys.end() || found->second == row) return;
    bool inUse = true;
    try {
        PlaceOf(key);
    } catch (const RuntimeError& error) {
        if (error.number != ElementNotFound().number) throw;
        inUse = false;
    }
    if (inUse) throw KeyNotUnique();
}

RowId WindowListView::InsertRow(int place, const std::wstring& text, int image, const std::wstring& key)
{
    CheckKey(key, 0);
    m_inOrder = -1;
    const RowId row = ++LastMark();
    const int at = m_window->InsertRow(std::min(place, m_window->RowCount()), text, image, row);
    m_places[row] = at;
    if (!key.empty()) SetKey(row, key);
    return row;
}

void WindowListView::RemoveRow(int place)
{
    const RowId row = IdAt(place);
    m_inOrder = -1;
    m_window->DeleteRow(place);
    m_places.erase(row);
    const auto found = m_extras.find(row);
    if (found == m_extras.end()) return;
    m_keys.erase(found->second.key);
    const ObjectRef discarded = std::move(found->second.tag);
    m_extras.erase(found);
}

void WindowListView::SetCell(int place, int column, const std::wstring& text)
{
    m_inOrder = -1;
    m_window->SetCell(place, column, text);
}

std::wstring WindowListView::KeyOf(RowId row) const
{
    const auto found = m_extras.find(row);
    return found == m_extras.end() ? std::wstring() : found->second.key;
}

void WindowListView::SetKey(RowId row, const std::wstring& key)
{
    CheckKey(key, row);
    std::wstring& own = m_extras[row].key;
    if (!own.empty()) m_keys.erase(own);
    own = key;
    if (!key.empty()) m_keys[key] = row;
}

ObjectRef WindowListView::TagOf(RowId row) const
{
    const auto found = m_extras.find(row);
    return found == m_extras.end() ? ObjectRef() : found->second.tag;
}

void WindowListView::SetTag(RowId row, const ObjectRef& tag)
{
    m_extras[row].tag = tag;
}

}  // namespace sylvex
