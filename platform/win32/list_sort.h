#pragma once

#include <string>
#include <vector>

#include "platform/win32/listwindow.h"

namespace sylvex {

/// One sorting of a list-view window's rows by a column's texts. The rows' data belong to the window's host: they are
/// read and never written, and stay with what the row shows. The message that compares data puts rows in order that
/// each have data of their own, as a framework's have. Rows that all have the same data, mostly none, exchange what
/// they show. In a list of both, the rows that share their data are inserted anew among the others. The message that
/// compares places is of no use: the places are those in the midst of the sort, and not every system's window answers
/// then for the row that stands there.
class ListSort {
public:
    /// The list must outlive the sorting. `column` counts from 0.
    ListSort(Win32ListWindow& list, int column, bool descending);
    /// The former place of the row at each place, rows alike in the order in which they stood; nothing when none has
    /// moved.
    std::vector<int> Run();

private:
    // What a row shows, but for its place in a group.
    struct Contents {
        std::vector<std::wstring> cells;
        LVITEMW item{};
    };
    LRESULT Send(UINT message, WPARAM wParam, const void* parameter) const;
    LPARAM DataOf(int row) const;
    void FindOrder();
    void FindShared();
    bool SortByData();
    void Exchange();
    void InsertShared();
    Contents Read(int row) const;
    void Write(int row, Contents contents);

    Win32ListWindow& m_list;
    const HWND m_window;
    const int m_column;
    const bool m_descending;
    std::vector<int> m_order;
    std::vector<LPARAM> m_data;
    std::vector<bool> m_isShared;  // by row: whether another one has the same data
    std::size_t m_shared = 0;
};

}  // namespace sylvex
