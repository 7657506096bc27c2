// candidate_queue.h: triangles by the error of their worst pixel, largest first.
#ifndef ZQMATH_TOOLS_MESH_CANDIDATE_QUEUE_H
#define ZQMATH_TOOLS_MESH_CANDIDATE_QUEUE_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zq::tool {

/// A binary max-heap of items (triangle indices) that knows where each item sits, so that an
/// item's key changes or the item leaves in O(log n) without stale entries.
class CandidateQueue {
public:
    /// Makes room for items below n, so that the queue does not grow step by step.
    void Reserve(std::size_t n);
    /// Gives item the key, adding it when it is not queued.
    void Set(std::uint32_t item, float key);
    /// Takes item out when it is queued.
    void Remove(std::uint32_t item);
    bool Empty() const { return m_heap.empty(); }
    /// The item with the largest key; the queue must not be empty.
    std::uint32_t Top() const { return m_heap.front().item; }

private:
    static constexpr std::uint32_t kAbsent = 0xFFFFFFFFu;

    struct Entry {
        float key;
        std::uint32_t item;
    };

    void Place(std::size_t at, const Entry& entry);
    void SiftUp(std::size_t at);
    void SiftDown(std::size_t at);

    std::vector<Entry> m_heap;
    /// Each item's place in m_heap, or kAbsent.
    std::vector<std::uint32_t> m_place;
};

} // namespace zq::tool

#endif
