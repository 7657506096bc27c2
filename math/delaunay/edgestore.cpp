// EdgeStore: the shared records, edge list and points of a subdivision.
#include "delaunay/edgestore.h"

#include "frame/prefault.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <stdexcept>

namespace zq::detail {

namespace {

/// The top bit of a record's place: an arena made the record.
constexpr std::uint32_t kFromArena = 0x80000000u;
/// The next bit: the record has been given a place in some list.
constexpr std::uint32_t kListed = 0x40000000u;
/// The rest: its position in the edge list.
constexpr std::uint32_t kPositionMask = 0x3FFFFFFFu;

/// Room that no record occupies: its address marks a removed record's place, since callers may
/// append null entries of their own.
alignas(C2QuadEdge) unsigned char g_hole[sizeof(C2QuadEdge)];

C2QuadEdge* Hole() {
    return reinterpret_cast<C2QuadEdge*>(g_hole);
}

/// True for an entry that holds a record: neither a hole nor a caller's null.
bool IsRecord(const C2QuadEdge* q) {
    return q != nullptr && q != Hole();
}

} // namespace

EdgeStore::~EdgeStore() {
    // The arena frees its own records at once: only those made with new need a call, and
    // reading every record to find none would cost a cache miss each.
    if (m_foreign == 0) {
        return;
    }
    KeepEachRecordOnce();
    for (C2QuadEdge* q : m_list) {
        if (IsRecord(q) && !MadeByArena(q)) {
            delete q;
        }
    }
}

void EdgeStore::ReserveRun(std::size_t count) {
    if (count > std::size_t(kPositionMask) + 1 - m_list.size()) {
        throw std::length_error("C2Subdivision: too many edge records");
    }
    m_run = m_records.TakeRun(count);
    m_runStart = m_list.size();
    // The places are filled by MakeRun, on whichever thread makes them: not zeroed here.
    m_list.resize(m_runStart + count);
}

void EdgeStore::MakeRun(std::size_t begin, std::size_t end) {
    // Mapping the pages in one call costs less than faulting them in one by one below.
    Prefault(&m_run[begin], (end - begin) * sizeof(m_run[0]));
    Prefault(&m_list[m_runStart + begin], (end - begin) * sizeof(m_list[0]));
    for (std::size_t i = begin; i < end; ++i) {
        C2QuadEdge* q = Arena<C2QuadEdge>::MakeInRun(m_run, i);
        q->m_place = kFromArena;
        SetPosition(q, m_runStart + i);
        m_list[m_runStart + i] = q;
    }
}

void EdgeStore::Truncate(std::size_t count) {
    Compact();
    for (std::size_t i = count; i < m_list.size(); ++i) {
        Destroy(m_list[i]);
    }
    if (count < m_list.size()) {
        m_list.resize(count);
    }
}

C2QuadEdge* EdgeStore::NewRecord() {
    C2QuadEdge* q = m_records.Create();
    q->m_place = kFromArena;
    Append(q);
    return q;
}

C2Edge* EdgeStore::NewEdge() {
    return &NewRecord()->m_edges[0];
}

std::size_t EdgeStore::Append(C2QuadEdge* q) {
    if (m_list.size() > kPositionMask) {
        throw std::length_error("C2Subdivision: too many edge records");
    }
    if (q != nullptr) {
        // A record listed before may sit earlier in this list: its position then says too little.
        m_repeats = m_repeats || (q->m_place & kListed) != 0;
        m_foreign += MadeByArena(q) ? 0 : 1;
        SetPosition(q, m_list.size());
    }
    m_list.push_back(q);
    return Count();
}

bool EdgeStore::Remove(C2QuadEdge* q) {
    // A record is found at its own position, unless a record was appended twice or q was last
    // appended to another list: then the list is searched from the front.
    const std::size_t i = Lists(q) && !m_repeats ? Position(q) : FirstPlaceOf(q);
    if (i == m_list.size()) {
        return false;
    }
    m_list[i] = Hole();
    ++m_holes;
    // Listed again further on, the record is freed with that entry, not twice.
    if (!m_repeats || std::find(m_list.begin() + i + 1, m_list.end(), q) == m_list.end()) {
        Destroy(q);
    }
    return true;
}

void EdgeStore::DestroyAll() {
    KeepEachRecordOnce();
    for (C2QuadEdge* q : m_list) {
        if (IsRecord(q)) {
            Destroy(q);
        }
    }
    m_list.clear();
    m_holes = 0;
}

std::size_t EdgeStore::Count() const {
    return m_list.size() - m_holes;
}

C2QuadEdge* EdgeStore::At(std::size_t i) {
    Compact();
    return i < m_list.size() ? m_list[i] : nullptr;
}

SFVec3f* EdgeStore::NewPoint(const SFVec3f& p) {
    return m_points.Create(p);
}

const std::vector<SFVec3f>& EdgeStore::Samples() const {
    return m_samples;
}

void EdgeStore::Compact() {
    if (m_holes == 0) {
        return;
    }
    std::size_t kept = 0;
    for (C2QuadEdge* q : m_list) {
        if (q != Hole()) {
            if (q != nullptr) {
                SetPosition(q, kept);
            }
            m_list[kept++] = q;
        }
    }
    m_list.resize(kept);
    m_holes = 0;
}

void EdgeStore::KeepEachRecordOnce() {
    if (!m_repeats) {
        return;
    }
    const std::less<const C2QuadEdge*> before{};
    std::sort(m_list.begin(), m_list.end(), before);
    m_list.erase(std::unique(m_list.begin(), m_list.end()), m_list.end());
    m_repeats = false;
}

std::size_t EdgeStore::FirstPlaceOf(const C2QuadEdge* q) const {
    return static_cast<std::size_t>(std::find(m_list.begin(), m_list.end(), q) - m_list.begin());
}

bool EdgeStore::Lists(const C2QuadEdge* q) const {
    return q != nullptr && Position(q) < m_list.size() && m_list[Position(q)] == q;
}

std::size_t EdgeStore::Position(const C2QuadEdge* q) {
    return q->m_place & kPositionMask;
}

void EdgeStore::Destroy(C2QuadEdge* q) {
    if (q == nullptr) {
        return;
    }
    if (m_records.Holds(q)) {
        m_records.Release(q);
    } else if (!MadeByArena(q)) {
        delete q;
    }
}

bool EdgeStore::MadeByArena(const C2QuadEdge* q) {
    return (q->m_place & kFromArena) != 0;
}

void EdgeStore::SetPosition(C2QuadEdge* q, std::size_t i) {
    q->m_place = (q->m_place & kFromArena) | kListed | static_cast<std::uint32_t>(i);
}

} // namespace zq::detail
