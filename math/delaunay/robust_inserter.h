// robust_inserter.h: site insertion decided by exact predicates. Not installed.
#ifndef ZQMATH_ROBUST_INSERTER_H
#define ZQMATH_ROBUST_INSERTER_H

#include "c2subdivision.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zq::detail {

/// Pairs of vertices that may lie close together.
using VertexPairs = std::vector<std::pair<const SFVec3f*, const SFVec3f*>>;

/// Inserts vertices of a subdivision, already in its vertex list, one at a time: a walk from
/// the starting edge to the triangle that holds the site, then the usual star and swaps, every
/// test exact. A site equal to a vertex is not inserted.
class RobustInserter {
public:
    /// Works on s, a bare triangle that strictly holds every site to come; edges shorter than
    /// shortEdge are reported.
    RobustInserter(C2Subdivision& s, double shortEdge);

    /// Copies of samples[i] for each i of candidates, vertex 3 + k for candidates[k], laid out
    /// in memory in the order of visit (order[j] is the candidate visited j-th); returns them
    /// in that order.
    std::vector<SFVec3f*> NewVertices(const SFVec3f* samples,
                                      const std::vector<std::size_t>& candidates,
                                      const std::vector<std::size_t>& order);
    /// Inserts site. Appends the vertex with the same x and z (site is then left out), or
    /// each new neighbour closer than the short edge, paired with site, to close.
    void Insert(SFVec3f* site, VertexPairs& close);

private:
    /// An edge of the triangle whose closure holds site, site not strictly right of it.
    C2Edge* Locate(const SFVec3f& site) const;
    /// Appends the neighbours of the site just inserted that are closer than the short edge.
    void FindCloseNeighbours(VertexPairs& close) const;

    C2Subdivision& m_subdivision;
    double m_shortEdgeSquared;
};

} // namespace zq::detail

#endif
