// RobustInserter: a visibility walk and the star-and-swap insertion, on exact predicates.
#include "delaunay/robust_inserter.h"

#include "delaunay/connectsite.h"
#include "delaunay/edgelinks.h"
#include "delaunay/edgestore.h"
#include "delaunay/robust_predicates.h"

#include <utility>

namespace zq::detail {

namespace {

/// The planar site of a vertex.
Site At(const SFVec3f& p) {
    return {p.x, p.z};
}

/// The orientation of site against the edge e.
inline int Side(const C2Edge* e, const SFVec3f& site) {
    return Orientation(At(*EdgeLinks::Org(e)), At(*EdgeLinks::Dest(e)), At(site));
}

bool SameSite(const SFVec3f& p, const SFVec3f& q) {
    return p.x == q.x && p.z == q.z;
}

/// The swap test of the robust insertion: the apex strictly right of the edge and the site
/// strictly inside the circle; cocircular sites keep the edge, so no swap ever undoes another.
struct ExactSwapTest {
    bool operator()(const SFVec3f& org, const SFVec3f& apex, const SFVec3f& dest,
                    const SFVec3f& site) const {
        return Orientation(At(apex), At(dest), At(org)) > 0 &&
               InCircleSign(At(org), At(apex), At(dest), At(site)) > 0;
    }
};

} // namespace

RobustInserter::RobustInserter(C2Subdivision& s, double shortEdge)
    : m_subdivision(s), m_shortEdgeSquared(shortEdge * shortEdge) {}

std::vector<SFVec3f*> RobustInserter::NewVertices(const SFVec3f* samples,
                                                  const std::vector<std::size_t>& candidates,
                                                  const std::vector<std::size_t>& order) {
    // Neighbours in the walk then sit near each other in memory: fewer cache misses.
    std::vector<SFVec3f*>& vertices = m_subdivision.m_vertices;
    vertices.resize(3 + candidates.size());
    m_subdivision.m_store->ReserveRecords(3 * candidates.size() + 3);
    std::vector<SFVec3f*> visited;
    visited.reserve(order.size());
    for (std::size_t k : order) {
        visited.push_back(m_subdivision.m_store->NewPoint(samples[candidates[k]]));
        vertices[3 + k] = visited.back();
    }
    return visited;
}

C2Edge* RobustInserter::Locate(const SFVec3f& site) const {
    C2Edge* e = m_subdivision.m_startingEdge;
    if (Side(e, site) < 0) {
        e = EdgeLinks::Sym(e);
    }
    // On a Delaunay triangulation, with exact tests, this walk cannot return to a triangle it
    // left; the two exits are tried in alternating order all the same, which also keeps a
    // long walk from hugging one side.
    for (unsigned step = 0;; ++step) {
        C2Edge* first = EdgeLinks::Lnext(e);
        C2Edge* second = EdgeLinks::Lprev(e);
        if ((step & 1) != 0) {
            std::swap(first, second);
        }
        if (Side(first, site) < 0) {
            e = EdgeLinks::Sym(first);
        } else if (Side(second, site) < 0) {
            e = EdgeLinks::Sym(second);
        } else {
            return e;
        }
    }
}

void RobustInserter::Insert(SFVec3f* site, VertexPairs& close) {
    C2Edge* e = Locate(*site);
    C2Edge* const sides[3] = {e, EdgeLinks::Lnext(e), EdgeLinks::Lprev(e)};
    for (C2Edge* side : sides) {
        if (SameSite(*EdgeLinks::Org(side), *site)) {
            close.emplace_back(EdgeLinks::Org(side), site);
            return;
        }
    }
    for (C2Edge* side : sides) {
        if (Side(side, *site) == 0) {
            // The site lies inside this edge: the edge goes, leaving a quadrilateral.
            e = EdgeLinks::Oprev(side);
            C2Subdivision* slot = &m_subdivision;
            C2Edge::DeleteEdge(EdgeLinks::Onext(e), &slot);
            break;
        }
    }
    m_subdivision.ConnectSite(e, site, ExactSwapTest());
    FindCloseNeighbours(close);
}

void RobustInserter::FindCloseNeighbours(VertexPairs& close) const {
    const C2Edge* first = EdgeLinks::Sym(m_subdivision.m_startingEdge);
    const SFVec3f& site = *EdgeLinks::Org(first);
    const C2Edge* e = first;
    do {
        const SFVec3f& v = *EdgeLinks::Dest(e);
        const double dx = v.x - site.x, dz = v.z - site.z;
        if (dx * dx + dz * dz < m_shortEdgeSquared) {
            close.emplace_back(&v, &site);
        }
        e = EdgeLinks::Onext(e);
    } while (e != first);
}

} // namespace zq::detail
