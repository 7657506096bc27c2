// robust_inserter.h: site insertion decided by exact predicates. Not installed.
#ifndef ZQMATH_ROBUST_INSERTER_H
#define ZQMATH_ROBUST_INSERTER_H

#include "c2subdivision.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zq::detail {

/// Inserts vertices of a subdivision, already in its vertex list, one at a time: a walk from
/// the starting edge to the triangle that holds the site, then the usual star and swaps, every
/// test exact. A site equal to a vertex is not inserted.
class RobustInserter {
public:
    /// Works on s, a subdivision whose enclosing triangle strictly holds every site to come.
    explicit RobustInserter(C2Subdivision& s);

    /// Appends a copy of p to the vertex list, not yet inserted.
    SFVec3f* NewVertex(const SFVec3f& p);
    /// Inserts site; returns null, or the vertex with the same x and z, which is left alone.
    const SFVec3f* Insert(SFVec3f* site);
    /// The ends of every edge shorter than limit in x-z.
    std::vector<std::pair<const SFVec3f*, const SFVec3f*>> EdgesShorterThan(double limit) const;

private:
    /// An edge of the triangle whose closure holds site, site not strictly right of it.
    C2Edge* Locate(const SFVec3f& site) const;

    C2Subdivision& m_subdivision;
};

} // namespace zq::detail

#endif
