#include "platform/sort_keys.h"

#include <algorithm>
#include <string_view>

namespace sylvex {

std::string& SortKeys::Next()
{
    m_keys.push_back({0, m_bytes.size(), 0, static_cast<std::uint32_t>(m_keys.size())});
    return m_bytes;
}

std::vector<std::uint32_t> SortKeys::Sorted(bool descending)
{
    std::size_t end = m_bytes.size();
    for (auto key = m_keys.rbegin(); key != m_keys.rend(); end = key->start, ++key) {
        key->length = static_cast<std::uint32_t>(end - key->start);
        for (std::size_t at = key->start; at < key->start + sizeof key->head; ++at)
            key->head = key->head << 8 | (at < end ? static_cast<unsigned char>(m_bytes[at]) : 0);
    }
    const auto less = [all = std::string_view(m_bytes)](const Key& left, const Key& right) {
        if (left.head != right.head) return left.head < right.head;
        return all.substr(left.start, left.length) < all.substr(right.start, right.length);
    };
    const auto before = [&](const Key& left, const Key& right) {
        return descending ? less(right, left) : less(left, right);
    };
    // A directory often lists its names in this order.
    if (!std::is_sorted(m_keys.begin(), m_keys.end(), before)) std::stable_sort(m_keys.begin(), m_keys.end(), before);
    std::vector<std::uint32_t> places;
    places.reserve(m_keys.size());
    for (const Key& key : m_keys)
        places.push_back(key.place);
    return places;
}

}  // namespace sylvex
