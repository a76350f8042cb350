#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/listwindow.h"

namespace sylvex {

/// Names a row wherever it moves, until it is removed. No two rows of any list ever have the same.
using RowId = std::intptr_t;

/// The names of a list's rows, given when first asked for. The rows' data belong to the window's host and are left
/// alone: rows are known by the numbers that the window itself gives them, or, where it gives none, by their places,
/// which are followed through what is told here. What a host does by itself to such a list moves names to other rows.
class RowNames {
public:
    explicit RowNames(std::shared_ptr<ListWindowRows> window) : m_window(std::move(window)) {}
    /// The row at a place, which must hold one.
    RowId At(int place);
    /// -1 when the row has been removed.
    int PlaceOf(RowId row);
    /// To be told after a row was added, after one was removed, and after all were.
    void Added(int place);
    void Removed(int place, RowId row);
    void Clear();
    /// Sorts the window's rows; names go with them.
    void Sort(int column, bool descending);

private:
    using Number = std::uint32_t;
    struct Row {
        Number number;
        int place;  // where it was last seen; its number tells whether it holds
    };
    Number NumberAt(int place);
    bool Holds(const Row& row);
    void FindPlaces();
    void Forget(RowId row);

    std::shared_ptr<ListWindowRows> m_window;
    std::unordered_map<Number, RowId> m_names;
    std::unordered_map<RowId, Row> m_rows;
    std::vector<Number> m_book;  // numbers by place, for a window that gives none
    Number m_lastNumber = 0;
};

}  // namespace sylvex
