// edgestore.h: what the copies of one subdivision share. Not installed.
#ifndef ZQMATH_EDGESTORE_H
#define ZQMATH_EDGESTORE_H

#include "delaunay/arena.h"
#include "delaunay/uninitialized.h"
#include "quadedge.h"
#include "sfvec3f.h"

#include <cstddef>
#include <vector>

namespace zq::detail {

/// The quad-edge records of a subdivision with their edge list in creation order, its vertex
/// points and its sample list. Removing a record leaves a hole in the list, found through the
/// record's own position; the list closes its holes in one pass before it is next read by index.
/// A caller may append null, or a record twice: the list keeps such entries as they come.
class EdgeStore {
public:
    EdgeStore() = default;
    EdgeStore(const EdgeStore&) = delete;
    EdgeStore& operator=(const EdgeStore&) = delete;
    /// Destroys every record of the list; the arenas free the rest.
    ~EdgeStore();

    /// Makes room for more places beyond those the list has, holes included, so that it grows
    /// without moving.
    void Reserve(std::size_t more) { m_list.reserve(m_list.size() + more); }
    /// A new record from the arena, appended to the list.
    C2QuadEdge* NewRecord();
    /// Edge 0 of a new record from the arena, appended to the list.
    C2Edge* NewEdge();
    /// Appends count places to the list for records side by side in one chunk of the arena:
    /// a run, whose records MakeRun then makes. Nothing else may use the store meanwhile.
    void ReserveRun(std::size_t count);
    /// Makes records [begin, end) of the run, in their places, mapping their pages first.
    /// Calls for disjoint ranges may run on different threads.
    void MakeRun(std::size_t begin, std::size_t end);
    /// Edge k of record i of the run, once made.
    C2Edge* RunEdge(std::size_t i, int k) {
        return &Arena<C2QuadEdge>::InRun(m_run, i)->m_edges[k];
    }
    /// Destroys the records of the list from position count on.
    void Truncate(std::size_t count);
    /// Appends q, null included, and returns the number of entries in the list.
    std::size_t Append(C2QuadEdge* q);
    /// Removes q's first entry from the list and destroys q; false (and nothing done) when the
    /// list lacks q.
    bool Remove(C2QuadEdge* q);
    /// Destroys every record of the list in order and empties it.
    void DestroyAll();
    /// The number of entries in the list.
    std::size_t Count() const;
    /// Entry i in list order, or null when i is out of range.
    C2QuadEdge* At(std::size_t i);

    /// Sets count places for points side by side aside: a point run, filled by MakePoint.
    /// Returns where the run lies, count * sizeof(SFVec3f) bytes.
    void* ReservePointRun(std::size_t count) { return m_pointRun = m_points.TakeRun(count); }
    /// A copy of p in place i of the point run. Calls for different places may run on
    /// different threads.
    SFVec3f* MakePoint(std::size_t i, const SFVec3f& p) {
        return Arena<SFVec3f>::MakeInRun(m_pointRun, i, p);
    }
    /// Point i of the point run, once made.
    SFVec3f* RunPoint(std::size_t i) const { return Arena<SFVec3f>::InRun(m_pointRun, i); }
    /// A copy of p that never moves.
    SFVec3f* NewPoint(const SFVec3f& p);
    /// The samples, ordered by vector length; nothing fills them.
    const std::vector<SFVec3f>& Samples() const;

private:
    /// Closes the holes, keeping the order, and renumbers the records.
    void Compact();
    /// Leaves each record in the list once, in no particular order, before all are freed.
    void KeepEachRecordOnce();
    /// The first place of q in the list, or the list's size when it lacks q.
    std::size_t FirstPlaceOf(const C2QuadEdge* q) const;
    /// True when q sits at its own position in this list.
    bool Lists(const C2QuadEdge* q) const;
    /// The position last recorded in q.
    static std::size_t Position(const C2QuadEdge* q);
    /// Frees q as it was allocated: into the arena, with delete, or not at all when another
    /// store's arena holds it.
    void Destroy(C2QuadEdge* q);
    /// True when some store's arena made q (not new).
    static bool MadeByArena(const C2QuadEdge* q);
    /// Records i as q's position in the list.
    static void SetPosition(C2QuadEdge* q, std::size_t i);

    Arena<C2QuadEdge> m_records;
    Arena<SFVec3f> m_points;
    /// Places of a run are unset until MakeRun fills them.
    UninitializedVector<C2QuadEdge*> m_list;
    Arena<SFVec3f>::Slot* m_pointRun = nullptr;
    /// The last run's first slot, and its first place in the list.
    Arena<C2QuadEdge>::Slot* m_run = nullptr;
    std::size_t m_runStart = 0;
    std::size_t m_holes = 0;
    /// Some record was appended after it had been listed anywhere: removals then search from
    /// the front.
    bool m_repeats = false;
    /// Records made with new ever appended: while there are none, nothing needs deleting.
    std::size_t m_foreign = 0;
    std::vector<SFVec3f> m_samples;
};

} // namespace zq::detail

#endif
