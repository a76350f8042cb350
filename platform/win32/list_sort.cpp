#include "platform/win32/list_sort.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/sort_keys.h"
#include "platform/win32/regional.h"

namespace sylvex {
namespace {

using Places = std::unordered_map<LPARAM, int>;

int CALLBACK CompareData(LPARAM left, LPARAM right, LPARAM parameter)
{
    const auto& places = *HandleOf<const Places*>(static_cast<std::uintptr_t>(parameter));
    const auto placeOf = [&](LPARAM data) {
        const auto found = places.find(data);
        return found == places.end() ? 0 : found->second;
    };
    return placeOf(left) - placeOf(right);
}

}  // namespace

ListSort::ListSort(Win32ListWindow& list, int column, bool descending)
    : m_list(list), m_window(WindowOf(list.Handle())), m_column(column), m_descending(descending)
{
}

LRESULT ListSort::Send(UINT message, WPARAM wParam, const void* parameter) const
{
    return SendMessageW(m_window, message, wParam, ParameterOf(parameter));
}

LPARAM ListSort::DataOf(int row) const
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    Send(LVM_GETITEMW, 0, &item);
    return item.lParam;
}

void ListSort::FindOrder()
{
    const auto count = std::max(m_list.RowCount(), 0);
    SortKeys keys(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        AppendSortKeyOf(m_list.Cell(row, m_column), keys.Next());
    const auto places = keys.Sorted(m_descending);
    m_order.assign(places.begin(), places.end());
}

std::vector<int> ListSort::Run()
{
    FindOrder();
    if (std::is_sorted(m_order.begin(), m_order.end())) return {};
    FindShared();
    const bool allAlike = std::adjacent_find(m_data.begin(), m_data.end(), std::not_equal_to<>()) == m_data.end();
    if (allAlike) {
        Exchange();
    } else if (m_shared > 0) {
        InsertShared();
    } else if (!SortByData()) {
        return {};
    }
    return std::move(m_order);
}

void ListSort::FindShared()
{
    std::unordered_map<LPARAM, std::size_t> rows;
    m_isShared.resize(m_order.size());
    for (std::size_t row = 0; row < m_order.size(); ++row) {
        m_data.push_back(DataOf(static_cast<int>(row)));
        const auto [first, isNew] = rows.try_emplace(m_data.back(), row);
        if (!isNew) m_isShared[row] = m_isShared[first->second] = true;
    }
    m_shared = static_cast<std::size_t>(std::count(m_isShared.begin(), m_isShared.end(), true));
}

// Those rows that share their data do not count.
bool ListSort::SortByData()
{
    Places places;
    for (std::size_t place = 0; place < m_order.size(); ++place)
        if (!m_isShared[m_order[place]]) places.emplace(m_data[m_order[place]], static_cast<int>(place));
    return Send(LVM_SORTITEMS, static_cast<WPARAM>(ParameterOf(&places)), reinterpret_cast<const void*>(&CompareData));
}

// All is read before anything goes.
void ListSort::InsertShared()
{
    std::vector<Contents> taken;
    for (const auto row : m_order)
        if (m_isShared[row]) taken.push_back(Read(row));
    for (auto row = m_isShared.size(); row-- > 0;)
        if (m_isShared[row]) m_list.DeleteRow(static_cast<int>(row));
    SortByData();
    auto next = taken.begin();
    for (std::size_t place = 0; place < m_order.size(); ++place) {
        if (!m_isShared[m_order[place]]) continue;
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = static_cast<int>(place);
        item.lParam = m_data[m_order[place]];
        const auto inserted = Send(LVM_INSERTITEMW, 0, &item);
        if (inserted < 0) throw OutOfMemory();
        Write(static_cast<int>(inserted), std::move(*next++));
    }
}

// Each round of the exchange is a ring of places: what stands at one goes to the next, the first is kept aside.
void ListSort::Exchange()
{
    std::vector<bool> done(m_order.size());
    for (std::size_t first = 0; first < m_order.size(); ++first) {
        auto place = first;
        if (done[first] || m_order[first] == static_cast<int>(first)) continue;
        auto aside = Read(static_cast<int>(first));
        for (auto next = static_cast<std::size_t>(m_order[place]); next != first;
             next = static_cast<std::size_t>(m_order[place])) {
            Write(static_cast<int>(place), Read(static_cast<int>(next)));
            done[place] = true;
            place = next;
        }
        Write(static_cast<int>(place), std::move(aside));
        done[place] = true;
    }
}

ListSort::Contents ListSort::Read(int row) const
{
    Contents contents;
    contents.item.mask = LVIF_IMAGE | LVIF_STATE | LVIF_INDENT;
    contents.item.stateMask = ~0u;
    contents.item.iItem = row;
    Send(LVM_GETITEMW, 0, &contents.item);
    const auto columns = std::max(m_list.ColumnCount(), 1);
    for (int column = 0; column < columns; ++column)
        contents.cells.push_back(m_list.Cell(row, column));
    return contents;
}

void ListSort::Write(int row, Contents contents)
{
    contents.item.iItem = row;
    contents.item.stateMask = ~0u;
    Send(LVM_SETITEMW, 0, &contents.item);
    for (std::size_t column = 0; column < contents.cells.size(); ++column)
        m_list.SetCell(row, static_cast<int>(column), contents.cells[column]);
}

}  // namespace sylvex
