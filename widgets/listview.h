#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/listwindow.h"

namespace sylvex {

/// A column as the control lays it out; the width is in twips (the list view's own unit in a default host).
struct ListColumn {
    const wchar_t* key;
    std::wstring caption;
    double width;
    Alignment alignment = Alignment::Left;
};

/// One row to be added: the texts of its columns by sub-item index (0 is the item text) and its picture.
struct ListRow {
    std::vector<std::wstring> cells;
    int image = 0;
};

/// The list view that the host has handed over, whatever it is made of. Every call may run host code and raises what
/// the list raises; a list that is gone raises 398.
class ListView {
public:
    static constexpr const wchar_t* kReportName = L"{ListView}";

    virtual ~ListView() = default;
    virtual WindowHandle hWnd() = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void Refresh() = 0;
    virtual void ClearItems() = 0;
    virtual void ClearColumns() = 0;
    virtual void AddColumn(const ListColumn& column) = 0;
    /// Sub-item index of the column with this key (0: the item text). Raises 35601 when there is none.
    virtual int SubItemIndex(const std::wstring& key) = 0;
    virtual void SetColumnWidth(const std::wstring& key, double twips) = 0;
    /// Adds rows in this order behind the present ones. Empty cells are not written.
    virtual void AddRows(const std::vector<ListRow>& rows) = 0;
    /// Sets the sort column (sub-item index) and switches sorting on: the rows are in order from now on.
    virtual void SortBy(int column) = 0;
    virtual int RowCount() = 0;
    /// The item texts of all rows.
    virtual std::vector<std::wstring> Texts() = 0;
    /// The text of a cell of the selected row; nothing when no row is selected.
    virtual std::optional<std::wstring> SelectedCell(int column) = 0;
    /// The object that the host handed over; for a list given by window handle, null.
    virtual ObjectRef HostObject() { return {}; }
};

}  // namespace sylvex
