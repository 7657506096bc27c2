// candidate_queue.cpp: the heap's sifts, keeping every item's place up to date.
#include "candidate_queue.h"

namespace zq::tool {

void CandidateQueue::Reserve(std::size_t n) {
    m_heap.reserve(n);
    m_place.reserve(n);
}

void CandidateQueue::Place(std::size_t at, const Entry& entry) {
    m_heap[at] = entry;
    m_place[entry.item] = static_cast<std::uint32_t>(at);
}

void CandidateQueue::SiftUp(std::size_t at) {
    const Entry entry = m_heap[at];
    while (at > 0) {
        const std::size_t parent = (at - 1) / 2;
        if (!(m_heap[parent].key < entry.key)) {
            break;
        }
        Place(at, m_heap[parent]);
        at = parent;
    }
    Place(at, entry);
}

void CandidateQueue::SiftDown(std::size_t at) {
    const Entry entry = m_heap[at];
    const std::size_t size = m_heap.size();
    for (;;) {
        std::size_t child = 2 * at + 1;
        if (child >= size) {
            break;
        }
        if (child + 1 < size && m_heap[child].key < m_heap[child + 1].key) {
            ++child;
        }
        if (!(entry.key < m_heap[child].key)) {
            break;
        }
        Place(at, m_heap[child]);
        at = child;
    }
    Place(at, entry);
}

void CandidateQueue::Set(std::uint32_t item, float key) {
    if (item >= m_place.size()) {
        m_place.resize(item + std::size_t{1}, kAbsent);
    }
    std::size_t at = m_place[item];
    if (at == kAbsent) {
        at = m_heap.size();
        m_heap.push_back({key, item});
        m_place[item] = static_cast<std::uint32_t>(at);
        SiftUp(at);
        return;
    }
    const float old = m_heap[at].key;
    m_heap[at].key = key;
    if (old < key) {
        SiftUp(at);
    } else {
        SiftDown(at);
    }
}

void CandidateQueue::Remove(std::uint32_t item) {
    if (item >= m_place.size() || m_place[item] == kAbsent) {
        return;
    }
    const std::size_t at = m_place[item];
    m_place[item] = kAbsent;
    const Entry last = m_heap.back();
    m_heap.pop_back();
    if (at == m_heap.size()) {
        return;
    }
    const float old = m_heap[at].key;
    Place(at, last);
    if (old < last.key) {
        SiftUp(at);
    } else {
        SiftDown(at);
    }
}

} // namespace zq::tool
