#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/runtime_error.h"
#include "widgets/imagelist.h"
#include "widgets/window_list.h"

namespace sylvex {

namespace {

constexpr double kTwipsPerInch = 1440;

}  // namespace

/// Takes note of columns that the host has added or removed by itself.
void WindowListView::MatchColumns()
{
    const auto count = static_cast<std::size_t>(m_window->ColumnCount());
    if (count < m_columns.size()) m_columns.resize(count);
    while (m_columns.size() < count)
        m_columns.push_back({++m_lastColumn, {}, {}, -1, Alignment::Left, {}});
}

WindowListView::Column& WindowListView::ColumnRecord(int place)
{
    MatchColumns();
    if (place < 0 || place >= static_cast<int>(m_columns.size())) throw IndexOutOfBounds();
    return m_columns[static_cast<std::size_t>(place)];
}

int WindowListView::ColumnCount()
{
    MatchColumns();
    return static_cast<int>(m_columns.size());
}

ColumnId WindowListView::ColumnAt(int place)
{
    return ColumnRecord(place).id;
}

int WindowListView::PlaceOfColumn(ColumnId column)
{
    MatchColumns();
    for (std::size_t place = 0; place < m_columns.size(); ++place)
        if (m_columns[place].id == column) return static_cast<int>(place);
    throw NodeGone();
}

int WindowListView::PlaceOfColumn(const std::wstring& key)
{
    MatchColumns();
    for (std::size_t place = 0; place < m_columns.size(); ++place)
        if (!key.empty() && m_columns[place].key == key) return static_cast<int>(place);
    throw ElementNotFound();
}

void WindowListView::CheckColumnKey(const std::wstring& key, ColumnId column)
{
    if (IsNumeric(key)) throw InvalidKey();
    for (const Column& other : m_columns)
        if (!key.empty() && other.key == key && other.id != column) throw KeyNotUnique();
}

void WindowListView::AddColumn(const ListColumn& column)
{
    InsertColumn(ColumnCount(), column.key, column.caption, column.width, column.alignment);
}

ColumnId WindowListView::InsertColumn(int place, const std::wstring& key, const std::wstring& caption, double twips,
                                      Alignment alignment)
{
    const int at = std::clamp(place, 0, ColumnCount());
    CheckColumnKey(key, 0);
    m_window->InsertColumn(at, caption, m_window->PixelsOf(twips), alignment);
    const ColumnId id = ++m_lastColumn;
    m_columns.insert(m_columns.begin() + at, {id, key, caption, twips, alignment, {}});
    return id;
}

void WindowListView::RemoveColumn(int place)
{
    // Letting go of a tag may run code of the host, which comes after everything else.
    const ObjectRef discarded = ColumnRecord(place).tag;
    m_window->DeleteColumn(place);
    m_columns.erase(m_columns.begin() + place);
}

void WindowListView::ClearColumns()
{
    for (int count = m_window->ColumnCount(); count-- > 0;)
        m_window->DeleteColumn(count);
    const auto discarded = std::exchange(m_columns, {});
}

const std::wstring& WindowListView::ColumnKey(int place)
{
    return ColumnRecord(place).key;
}

void WindowListView::SetColumnKey(int place, const std::wstring& key)
{
    Column& column = ColumnRecord(place);
    CheckColumnKey(key, column.id);
    column.key = key;
}

const std::wstring& WindowListView::Caption(int place)
{
    return ColumnRecord(place).caption;
}

void WindowListView::SetCaption(int place, const std::wstring& caption)
{
    // Written first: the window tells its host, which may do anything to the columns.
    Column& column = ColumnRecord(place);
    column.caption = caption;
    m_window->SetColumn(place, caption, column.alignment);
}

Alignment WindowListView::AlignmentOf(int place)
{
    return ColumnRecord(place).alignment;
}

void WindowListView::SetAlignment(int place, Alignment alignment)
{
    Column& column = ColumnRecord(place);
    column.alignment = alignment;
    const std::wstring caption = column.caption;
    m_window->SetColumn(place, caption, alignment);
}

double WindowListView::Width(int place)
{
    const Column& column = ColumnRecord(place);
    const int pixels = m_window->ColumnWidth(place);
    if (column.twips >= 0 && m_window->PixelsOf(column.twips) == pixels) return column.twips;
    return pixels * kTwipsPerInch / std::max(m_window->PixelsOf(kTwipsPerInch), 1);
}

void WindowListView::SetWidth(int place, double twips)
{
    Column& column = ColumnRecord(place);
    if (!(twips >= 0)) throw InvalidPropertyValue();
    column.twips = twips;
    m_window->SetColumnWidth(place, m_window->PixelsOf(twips));
}

ObjectRef WindowListView::ColumnTag(int place)
{
    return ColumnRecord(place).tag;
}

void WindowListView::SetColumnTag(int place, const ObjectRef& tag)
{
    ColumnRecord(place).tag = tag;
}

}  // namespace sylvex
