#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/types.h"
#include "widgets/listview.h"
#include "widgets/row_names.h"

namespace sylvex {

/// Names a column wherever it moves, until it is removed.
using ColumnId = std::uint32_t;

/// What another layer keeps with a list for as long as the list exists.
class ListCompanion {
public:
    virtual ~ListCompanion() = default;
};

/// A list view given by its window. The window is the truth for rows, texts, pictures, marks and widths, since its host
/// and its user may change them; kept here is what a window has no room for: keys, tags, widths in twips, and the wish
/// to be sorted. Every call raises 398 when the window is gone.
class WindowListView : public ListView {
public:
    explicit WindowListView(std::unique_ptr<ListWindow> window);

    // ListView
    WindowHandle hWnd() override;
    std::shared_ptr<Frozen> Freeze() override;
    void SetVisible(bool visible) override { m_window->SetVisible(visible); }
    void Refresh() override { m_window->Refresh(); }
    void ClearItems() override;
    void ClearColumns() override;
    void AddColumn(const ListColumn& column) override;
    int SubItemIndex(const std::wstring& key) override { return PlaceOfColumn(key); }
    void SetColumnWidth(const std::wstring& key, double twips) override { SetWidth(PlaceOfColumn(key), twips); }
    void AddRows(RowSource& rows, bool sortFollows) override;
    void SortBy(int column) override;
    int RowCount() override { return m_window->RowCount(); }
    std::vector<std::wstring> Texts() override;
    std::optional<std::wstring> SelectedCell(int column) override;
    bool IsSelectedItemSelected() override { return m_window->SelectedRow() >= 0; }

    /// The window, for all that needs no more than a place. Texts are written by SetCell below.
    ListWindow& Window() { return *m_window; }
    /// Places of rows count from 0. Raises 35600 when there is no such row.
    RowId IdAt(int place);
    /// Raises 35605 when the row has been removed.
    int PlaceOf(RowId row);
    /// Raises 35601 when no row has the key.
    int PlaceOf(const std::wstring& key);
    /// Adds a row; a place past the end appends. An empty key is none. Raises 35602 for a key in use, 35603 for a
    /// number as key.
    RowId InsertRow(int place, const std::wstring& text, int image, const std::wstring& key);
    void RemoveRow(int place);
    void SetCell(int place, int column, const std::wstring& text);
    /// Empty when the row has none.
    std::wstring KeyOf(RowId row) const;
    void SetKey(RowId row, const std::wstring& key);
    ObjectRef TagOf(RowId row) const;
    void SetTag(RowId row, const ObjectRef& tag);

    int ColumnCount();
    /// Places of columns count from 0. Raises 35600 when there is no such column.
    ColumnId ColumnAt(int place);
    /// Raises 35605 when the column has been removed.
    int PlaceOfColumn(ColumnId column);
    /// Raises 35601 when no column has the key.
    int PlaceOfColumn(const std::wstring& key);
    ColumnId InsertColumn(int place, const std::wstring& key, const std::wstring& caption, double twips,
                          Alignment alignment);
    void RemoveColumn(int place);
    const std::wstring& ColumnKey(int place);
    void SetColumnKey(int place, const std::wstring& key);
    const std::wstring& Caption(int place);
    void SetCaption(int place, const std::wstring& caption);
    Alignment AlignmentOf(int place);
    void SetAlignment(int place, Alignment alignment);
    /// In twips: what was written, unless the user has changed the column since.
    double Width(int place);
    void SetWidth(int place, double twips);
    ObjectRef ColumnTag(int place);
    void SetColumnTag(int place, const ObjectRef& tag);

    /// Sub-item index that sorting goes by. Writing raises 380 for a negative one; a sorted list is sorted anew.
    int SortKey() const { return m_sortKey; }
    void SetSortKey(int column);
    bool Descending() const { return m_descending; }
    void SetDescending(bool descending);
    bool Sorted() const { return m_sorted; }
    /// Switching sorting on sorts the rows now.
    void SetSorted(bool sorted);

    /// What the layer above keeps here; destroyed with the list.
    std::unique_ptr<ListCompanion> companion;

private:
    struct Column {
        ColumnId id = 0;
        std::wstring key;
        std::wstring caption;
        double twips = 0;
        Alignment alignment = Alignment::Left;
        ObjectRef tag;
    };
    struct Extras {
        std::wstring key;
        ObjectRef tag;
    };

    void WriteRow(int place, const ListRow& row);
    void SortNow();
    void CheckKey(const std::wstring& key, RowId row);
    void CheckColumnKey(const std::wstring& key, ColumnId column);
    Column& ColumnRecord(int place);
    void MatchColumns();

    std::shared_ptr<ListWindow> m_window;
    std::weak_ptr<Frozen> m_frozen;
    RowNames m_names;
    std::vector<Column> m_columns;
    ColumnId m_lastColumn = 0;
    std::unordered_map<RowId, Extras> m_extras;
    std::unordered_map<std::wstring, RowId> m_keys;
    int m_sortKey = 0;
    bool m_descending = false;
    bool m_sorted = false;
    int m_inOrder = -1;  // so many rows, all there were, have been added in the order of their item texts
};

}  // namespace sylvex
