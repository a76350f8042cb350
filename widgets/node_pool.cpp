#include "widgets/node_pool.h"

#include <algorithm>
#include <new>

namespace sylvex {

void* NodePool::Take()
{
    if (m_free != nullptr) {
        Free* taken = m_free;
        m_free = taken->next;
        return taken;
    }
    if (m_usedInLast == kPerBlock) {
        m_blocks.emplace_back(new std::byte[m_size * kPerBlock]);
        const auto start = reinterpret_cast<std::uintptr_t>(m_blocks.back().get());
        m_starts.insert(std::upper_bound(m_starts.begin(), m_starts.end(), start), start);
        m_usedInLast = 0;
    }
    return m_blocks.back().get() + m_size * m_usedInLast++;
}

void NodePool::Give(void* object) noexcept
{
    m_free = new (object) Free{m_free};
}

bool NodePool::Holds(std::uintptr_t address) const noexcept
{
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), address);
    if (behind == m_starts.begin()) return false;
    const std::uintptr_t offset = address - *(behind - 1);
    return offset < m_size * kPerBlock && offset % m_size == 0;
}

void NodePool::Reset() noexcept
{
    m_starts.clear();
    m_blocks.clear();
    m_blocks.shrink_to_fit();
    m_usedInLast = kPerBlock;
    m_free = nullptr;
}

}  // namespace sylvex
