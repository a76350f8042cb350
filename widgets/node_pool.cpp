#include "widgets/node_pool.h"

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
        m_usedInLast = 0;
    }
    return m_blocks.back().get() + m_size * m_usedInLast++;
}

void NodePool::Give(void* object) noexcept
{
    m_free = new (object) Free{m_free};
}

void NodePool::Reset() noexcept
{
    m_blocks.clear();
    m_blocks.shrink_to_fit();
    m_usedInLast = kPerBlock;
    m_free = nullptr;
}

}  // namespace sylvex
