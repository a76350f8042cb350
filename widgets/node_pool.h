#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace sylvex {

/// Memory for objects of one size, taken in blocks: a million small objects without an allocation each.
class NodePool {
public:
    explicit NodePool(std::size_t objectSize) : m_size(objectSize) {}
    void* Take();
    void Give(void* object) noexcept;
    /// Whether an object of the pool, taken or free, begins at this address.
    bool Holds(std::uintptr_t address) const noexcept;
    /// Gives all memory back; no object may be alive.
    void Reset() noexcept;

private:
    struct Free {
        Free* next;
    };
    static constexpr std::size_t kPerBlock = 512;
    std::size_t m_size;
    std::vector<std::unique_ptr<std::byte[]>> m_blocks;
    std::vector<std::uintptr_t> m_starts;  // of the blocks, ascending
    std::size_t m_usedInLast = kPerBlock;
    Free* m_free = nullptr;
};

}  // namespace sylvex
