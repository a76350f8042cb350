#pragma once

#include <cstdint>
#include <vector>

namespace sylvex {

/// The order of a collection whose members keep their slot for life: slots are handed out ascending, may be empty, and
/// a member's position is the number of filled slots up to its own. Every operation costs the logarithm of the slots.
class OrderIndex {
public:
    /// A new last slot.
    std::uint32_t Append(bool filled);
    void Fill(std::uint32_t slot) { Change(slot, +1); }
    void Empty(std::uint32_t slot) { Change(slot, -1); }
    /// Position from 1 of a filled slot.
    std::uint32_t PositionOf(std::uint32_t slot) const;
    /// The slot at a position from 1 to Count().
    std::uint32_t SlotAt(std::uint32_t position) const;
    std::uint32_t Count() const { return m_count; }
    std::uint32_t Slots() const { return static_cast<std::uint32_t>(m_sums.size()); }
    void Clear();

private:
    void Change(std::uint32_t slot, std::int32_t by);
    std::vector<std::uint32_t> m_sums;  // a binary indexed tree over the slots
    std::uint32_t m_count = 0;
};

}  // namespace sylvex
