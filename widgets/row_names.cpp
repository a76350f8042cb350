#include "widgets/row_names.h"

#include <algorithm>
#include <atomic>
#include <optional>

namespace sylvex {

namespace {

/// One sequence for all lists, because the same window may be handed over twice.
RowId NewName()
{
    static std::atomic<RowId> last = 0;
    return ++last;
}

}  // namespace

RowNames::Number RowNames::NumberAt(int place)
{
    if (const std::optional<Number> number = m_window->RowNumber(place)) return *number;
    const auto count = static_cast<std::size_t>(m_window->RowCount());
    if (count < m_book.size()) m_book.resize(count);
    while (m_book.size() < count)
        m_book.push_back(++m_lastNumber);
    return m_book.at(static_cast<std::size_t>(place));
}

RowId RowNames::At(int place)
{
    const Number number = NumberAt(place);
    const auto [found, isNew] = m_names.try_emplace(number, 0);
    if (isNew) found->second = NewName();
    m_rows[found->second] = {number, place};
    return found->second;
}

bool RowNames::Holds(const Row& row)
{
    return row.place < m_window->RowCount() && NumberAt(row.place) == row.number;
}

int RowNames::PlaceOf(RowId row)
{
    for (const bool lookEverywhere : {false, true}) {
        if (lookEverywhere) FindPlaces();
        const auto found = m_rows.find(row);
        if (found == m_rows.end()) return -1;
        // The window may be a host's own, whose code may come back here.
        const Row seen = found->second;
        if (Holds(seen)) return seen.place;
    }
    Forget(row);
    return -1;
}

/// Looks at every row, so that the next many questions need not.
void RowNames::FindPlaces()
{
    const int count = m_window->RowCount();
    for (int place = 0; place < count; ++place) {
        const auto found = m_names.find(NumberAt(place));
        if (found != m_names.end()) m_rows[found->second].place = place;
    }
}

void RowNames::Forget(RowId row)
{
    const auto found = m_rows.find(row);
    if (found == m_rows.end()) return;
    m_names.erase(found->second.number);
    m_rows.erase(found);
}

void RowNames::Added(int place)
{
    if (m_rows.empty()) return;
    if (!m_book.empty()) {
        const std::size_t at = std::min(static_cast<std::size_t>(place), m_book.size());
        m_book.insert(m_book.begin() + static_cast<std::ptrdiff_t>(at), ++m_lastNumber);
    }
    // A window may give the number of a removed row again.
    const auto stale = m_names.find(NumberAt(place));
    if (stale != m_names.end()) Forget(stale->second);
}

void RowNames::Removed(int place, RowId row)
{
    if (static_cast<std::size_t>(place) < m_book.size()) m_book.erase(m_book.begin() + place);
    Forget(row);
}

void RowNames::Clear()
{
    m_names.clear();
    m_rows.clear();
    m_book.clear();
}

void RowNames::Sort(int column, bool descending)
{
    std::vector<Number> numbers;
    if (!m_rows.empty()) {
        for (int place = 0; place < m_window->RowCount(); ++place)
            numbers.push_back(NumberAt(place));
    }
    const std::vector<int> order = m_window->Sort(column, descending);
    if (order.empty() || order.size() != numbers.size()) return;
    if (m_window->RowCount() < static_cast<int>(order.size())) return;
    // Rows may have moved with their numbers, or their contents without them, or come anew.
    std::unordered_map<Number, RowId> names;
    for (std::size_t place = 0; place < order.size(); ++place) {
        const Number number = NumberAt(static_cast<int>(place));
        const auto found = m_names.find(numbers[static_cast<std::size_t>(order[place])]);
        if (found == m_names.end()) continue;
        names.emplace(number, found->second);
        m_rows[found->second] = {number, static_cast<int>(place)};
    }
    m_names = std::move(names);
}

}  // namespace sylvex
