// pointer_index.h: where each pointer of a list sits, found by hashing. Not installed.
#ifndef ZQMATH_POINTER_INDEX_H
#define ZQMATH_POINTER_INDEX_H

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zq::detail {

/// The positions of a list's pointers in an open-addressing table at most half full: one
/// multiplication and a probe or two a lookup, where a node-based map costs a heap call an
/// entry and a cache miss a node.
template <class T>
class PointerIndex {
public:
    /// Not in the list.
    static constexpr std::size_t kMissing = ~std::size_t(0);

    /// Indexes list; a pointer listed twice keeps its first position; nulls are not indexed.
    explicit PointerIndex(const std::vector<T*>& list) {
        while ((std::size_t(1) << m_bits) < 2 * list.size() + 1) {
            ++m_bits;
        }
        m_slots.assign(std::size_t(1) << m_bits, {nullptr, 0});
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (list[i] == nullptr) {
                continue;
            }
            std::size_t s = Home(list[i]);
            while (m_slots[s].first != nullptr && m_slots[s].first != list[i]) {
                s = (s + 1) & (m_slots.size() - 1);
            }
            if (m_slots[s].first == nullptr) {
                m_slots[s] = {list[i], i};
            }
        }
    }

    /// The position of p in the list, or kMissing.
    std::size_t Find(const T* p) const {
        for (std::size_t s = Home(p);; s = (s + 1) & (m_slots.size() - 1)) {
            if (m_slots[s].first == p) {
                return m_slots[s].second;
            }
            if (m_slots[s].first == nullptr) {
                return kMissing;
            }
        }
    }

private:
    /// The slot p hashes to: the top bits of a Fibonacci product.
    std::size_t Home(const T* p) const {
        const std::uint64_t h =
            std::uint64_t(reinterpret_cast<std::uintptr_t>(p)) * 0x9E3779B97F4A7C15ull;
        return static_cast<std::size_t>(h >> (64 - m_bits));
    }

    int m_bits = 1;
    std::vector<std::pair<const T*, std::size_t>> m_slots;
};

} // namespace zq::detail

#endif
