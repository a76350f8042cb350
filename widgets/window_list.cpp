#include "widgets/window_list.h"

#include <algorithm>
#include <utility>

#include "platform/runtime_error.h"
#include "widgets/imagelist.h"

namespace sylvex {

WindowListView::WindowListView(std::unique_ptr<ListWindow> window) : m_window(std::move(window)), m_names(m_window) {}

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
    m_names.Clear();
    m_inOrder = -1;
}

void WindowListView::AddRows(RowSource& rows, bool sortFollows)
{
    const int before = m_window->RowCount();
    if (before == 0) m_names.Clear();
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
    const int written = m_window->InsertRow(place, row.cells.front(), row.image);
    m_names.Added(written);
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
    m_names.Sort(m_sortKey, m_descending);
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
    return m_names.At(place);
}

int WindowListView::PlaceOf(RowId row)
{
    const int place = m_names.PlaceOf(row);
    if (place < 0) throw NodeGone();
    return place;
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
    const int count = m_window->RowCount();
    if (count == 0) m_names.Clear();
    const int at = m_window->InsertRow(std::min(place, count), text, image);
    m_names.Added(at);
    const RowId row = m_names.At(at);
    if (!key.empty()) SetKey(row, key);
    return row;
}

void WindowListView::RemoveRow(int place)
{
    const RowId row = IdAt(place);
    m_inOrder = -1;
    m_window->DeleteRow(place);
    m_names.Removed(place, row);
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
