#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/listwindow.h"
#include "widgets/frozen.h"

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

/// Rows to be added to a list. They are made one at a time, so that a long list is never held twice.
class RowSource {
public:
    virtual ~RowSource() = default;
    virtual std::size_t Count() const = 0;
    /// The row at a place from 0; valid until the next call.
    virtual const ListRow& Row(std::size_t place) = 0;
    /// The places in the order of the rows' item texts, rows alike in the order in which they stand here.
    virtual std::vector<std::uint32_t> SortedPlaces(bool descending) const = 0;
};

/// The list view that the host has handed over, whatever it is made of. Every call may run host code and raises what
/// the list raises; a list that is gone raises 398.
class ListView {
public:
    static constexpr const wchar_t* kReportName = L"{ListView}";

    virtual ~ListView() = default;
    virtual WindowHandle hWnd() = 0;
    /// Stops the painting until the last of the answers is let go of; null for a list without a window.
    virtual std::shared_ptr<Frozen> Freeze() = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void Refresh() = 0;
    virtual void ClearItems() = 0;
    virtual void ClearColumns() = 0;
    virtual void AddColumn(const ListColumn& column) = 0;
    /// Sub-item index of the column with this key (0: the item text). Raises 35601 when there is none.
    virtual int SubItemIndex(const std::wstring& key) = 0;
    virtual void SetColumnWidth(const std::wstring& key, double twips) = 0;
    /// Adds rows in this order behind the present ones. Empty cells are not written; a list that paints would
    /// paint with each cell. `sortFollows`: SortBy(0) comes
    /// next, so that an empty list may take the rows in that order at once.
    virtual void AddRows(RowSource& rows, bool sortFollows) = 0;
    /// Sets the sort column (sub-item index) and switches sorting on: the rows are in order from now on.
    virtual void SortBy(int column) = 0;
    virtual int RowCount() = 0;
    /// The item texts of all rows.
    virtual std::vector<std::wstring> Texts() = 0;
    /// The text of a cell of the selected row; nothing when no row is selected.
    virtual std::optional<std::wstring> SelectedCell(int column) = 0;
    /// Whether that row is selected: an object may give an item as its selected one that is not.
    virtual bool IsSelectedItemSelected() = 0;
    /// The object that the host handed over; for a list given by window handle, null.
    virtual ObjectRef HostObject() { return {}; }
};

}  // namespace sylvex
