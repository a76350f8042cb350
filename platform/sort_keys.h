#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sylvex {

/// Sorts things by keys that are made once and order as bytes do. The things stand at places from 0 on.
class SortKeys {
public:
    explicit SortKeys(std::size_t count) { m_keys.reserve(count); }
    /// Where the key of the next place is to be appended, as by Regional::AppendSortKey.
    std::string& Next();
    /// The places in the order of their keys, those of equal keys in their own order.
    std::vector<std::uint32_t> Sorted(bool descending = false);

private:
    struct Key {
        std::uint64_t head;  // the first bytes, which settle most comparisons
        std::size_t start;
        std::uint32_t length;
        std::uint32_t place;
    };
    std::string m_bytes;
    std::vector<Key> m_keys;
};

}  // namespace sylvex
