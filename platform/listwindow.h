#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/types.h"

namespace sylvex {

enum class Alignment { Left = 0, Right = 1, Center = 2 };

/// The rows of a list window. They count from 0.
class ListWindowRows {
public:
    virtual ~ListWindowRows() = default;
    virtual int RowCount() = 0;
    /// Inserts a row without data of its own; `row` past the end appends. Gives its place.
    virtual int InsertRow(int row, const std::wstring& text, int image) = 0;
    virtual void DeleteRow(int row) = 0;
    virtual void ClearRows() = 0;
    virtual std::wstring Cell(int row, int column) = 0;
    virtual void SetCell(int row, int column, const std::wstring& text) = 0;
    /// The number by which the window itself knows a row for as long as the row exists; nothing when it gives none.
    virtual std::optional<std::uint32_t> RowNumber(int row) = 0;
    /// Sorts the rows by a column's text, without regard to letter case, rows alike keeping their order. No row's data
    /// are written. Gives the former place of the row at each place; nothing when none has moved.
    virtual std::vector<int> Sort(int column, bool descending) = 0;
};

/// What a row shows beside its texts.
class ListWindowMarks {
public:
    virtual ~ListWindowMarks() = default;
    virtual void SetRowImage(int row, int image) = 0;
    virtual int RowImage(int row) = 0;
    /// The selected row, the focused one first; -1 when there is none.
    virtual int SelectedRow() = 0;
    virtual bool IsSelected(int row) = 0;
    virtual void SelectRow(int row, bool selected) = 0;
    virtual bool IsChecked(int row) = 0;
    virtual void CheckRow(int row, bool checked) = 0;
    virtual void EnsureVisible(int row) = 0;
};

/// The columns of a list window. They count from 0; widths are in pixels.
class ListWindowColumns {
public:
    virtual ~ListWindowColumns() = default;
    virtual int ColumnCount() = 0;
    virtual void InsertColumn(int column, const std::wstring& caption, int width, Alignment alignment) = 0;
    virtual void DeleteColumn(int column) = 0;
    virtual void SetColumn(int column, const std::wstring& caption, Alignment alignment) = 0;
    virtual int ColumnWidth(int column) = 0;
    virtual void SetColumnWidth(int column, int width) = 0;
    /// Pixels for a width in twips on this window's screen.
    virtual int PixelsOf(double twips) = 0;
};

/// Whether a list window shows and paints.
class ListWindowFace {
public:
    virtual ~ListWindowFace() = default;
    virtual bool Visible() = 0;
    virtual void SetVisible(bool visible) = 0;
    /// Off: nothing repaints while many rows are written.
    virtual void SetRedraw(bool redraw) = 0;
    virtual void Refresh() = 0;
};

/// A list-view window in report view that belongs to the host. A window that has been destroyed answers every call with
/// run-time error 398 (object not available).
class ListWindow : public ListWindowRows, public ListWindowMarks, public ListWindowColumns, public ListWindowFace {
public:
    virtual WindowHandle Handle() const = 0;
};

}  // namespace sylvex
