// arena.h: a pool of objects with stable addresses, allocated in chunks. Not installed.
#ifndef ZQMATH_ARENA_H
#define ZQMATH_ARENA_H

#include "frame/prefault.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace zq::detail {

/// Objects of one trivially destructible type, carved from chunks that double in size up to a
/// limit: no heap call per object, and an object never moves. Released objects are reused;
/// the memory goes back to the heap when the arena is destroyed.
template <class T>
class Arena {
    static_assert(std::is_trivially_destructible_v<T>, "the arena never runs destructors");

public:
    /// Raw room for one object.
    struct alignas(T) Slot {
        unsigned char bytes[sizeof(T)];
    };

    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// Sets count slots aside, side by side, for objects that MakeInRun builds later; returns
    /// the first (null for none).
    Slot* TakeRun(std::size_t count) {
        if (count == 0) {
            return nullptr;
        }
        if (m_capacity - m_used < count) {
            AddChunk(count);
        }
        Slot* run = &m_chunks.back()[m_used];
        m_used += count;
        return run;
    }
    /// Builds object i of a run from args. Calls for different objects may run on different
    /// threads.
    template <class... Args>
    static T* MakeInRun(Slot* run, std::size_t i, Args&&... args) {
        return new (&run[i]) T(std::forward<Args>(args)...);
    }
    /// Object i of a run, once built.
    static T* InRun(Slot* run, std::size_t i) {
        return std::launder(reinterpret_cast<T*>(&run[i]));
    }

    /// A new object built from args, in a released slot if there is one.
    template <class... Args>
    T* Create(Args&&... args) {
        return new (Take()) T(std::forward<Args>(args)...);
    }
    /// Gives the slot of p back for reuse; p must come from this arena.
    void Release(T* p) { m_free.push_back(p); }
    /// True when p points into one of this arena's chunks.
    bool Holds(const T* p) const {
        const auto* slot = reinterpret_cast<const Slot*>(p);
        const std::less<const Slot*> before{};
        // The last chunk starting at or before p.
        auto after = std::upper_bound(
            m_ranges.begin(), m_ranges.end(), slot,
            [&before](const Slot* s, const Range& r) { return before(s, r.first); });
        if (after == m_ranges.begin()) {
            return false;
        }
        --after;
        return before(slot, after->first + after->second);
    }

private:
    static constexpr std::size_t kFirstChunk = 64;
    static constexpr std::size_t kLargestChunk = std::size_t(1) << 16;

    using Range = std::pair<const Slot*, std::size_t>;

    /// Makes a chunk of capacity slots the current one; a chunk of a whole subdivision's
    /// records can be large enough for large pages.
    void AddChunk(std::size_t capacity) {
        m_chunks.emplace_back(new Slot[capacity]);
        AdviseLargePages(m_chunks.back().get(), capacity * sizeof(Slot));
        const Range range(m_chunks.back().get(), capacity);
        const std::less<const Slot*> before{};
        m_ranges.insert(std::upper_bound(m_ranges.begin(), m_ranges.end(), range,
                                         [&before](const Range& a, const Range& b) {
                                             return before(a.first, b.first);
                                         }),
                        range);
        m_capacity = capacity;
        m_used = 0;
    }

    /// Raw room for one object.
    void* Take() {
        if (!m_free.empty()) {
            T* p = m_free.back();
            m_free.pop_back();
            return p;
        }
        if (m_used == m_capacity) {
            AddChunk(m_chunks.empty() ? kFirstChunk : std::min(2 * m_capacity, kLargestChunk));
            // The chunk fills from its start: its pages mapped in one call fault in faster.
            Prefault(m_chunks.back().get(), m_capacity * sizeof(Slot));
        }
        return &m_chunks.back()[m_used++];
    }

    std::vector<std::unique_ptr<Slot[]>> m_chunks;
    /// Every chunk's first slot and size, by address.
    std::vector<Range> m_ranges;
    std::size_t m_used = 0;
    std::size_t m_capacity = 0;
    std::vector<T*> m_free;
};

} // namespace zq::detail

#endif
