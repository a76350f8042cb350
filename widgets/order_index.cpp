#include "widgets/order_index.h"

#include <bit>

namespace sylvex {

std::uint32_t OrderIndex::Append(bool filled)
{
    // The new cell covers the cells below it that its lowest bit spans.
    const std::uint32_t cell = Slots() + 1;
    std::uint32_t sum = filled ? 1 : 0;
    const std::uint32_t span = cell & (~cell + 1);
    for (std::uint32_t step = 1; step < span; step <<= 1)
        sum += m_sums[cell - step - 1];
    m_sums.push_back(sum);
    m_count += filled ? 1 : 0;
    return cell - 1;
}

void OrderIndex::Change(std::uint32_t slot, std::int32_t by)
{
    for (std::uint32_t cell = slot + 1; cell <= Slots(); cell += cell & (~cell + 1))
        m_sums[cell - 1] += static_cast<std::uint32_t>(by);
    m_count += static_cast<std::uint32_t>(by);
}

std::uint32_t OrderIndex::PositionOf(std::uint32_t slot) const
{
    std::uint32_t position = 0;
    for (std::uint32_t cell = slot + 1; cell != 0; cell &= cell - 1)
        position += m_sums[cell - 1];
    return position;
}

std::uint32_t OrderIndex::SlotAt(std::uint32_t position) const
{
    std::uint32_t cell = 0;
    for (std::uint32_t step = std::bit_floor(Slots()); step != 0; step >>= 1) {
        if (cell + step > Slots() || m_sums[cell + step - 1] >= position) continue;
        cell += step;
        position -= m_sums[cell - 1];
    }
    return cell;
}

void OrderIndex::Clear()
{
    m_sums.clear();
    m_count = 0;
}

}  // namespace sylvex
