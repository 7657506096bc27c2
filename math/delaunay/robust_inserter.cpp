// RobustInserter: a visibility walk and the star-and-swap insertion, on exact predicates.
#include "delaunay/robust_inserter.h"

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
int Side(const C2Edge* e, const SFVec3f& site) {
    return Orientation(At(*e->Org()), At(*EdgeLinks::Sym(e)->Org()), At(site));
}

bool SameSite(const SFVec3f& p, const SFVec3f& q) {
    return p.x == q.x && p.z == q.z;
}

/// The swap test of the robust insertion: the apex strictly right of the edge and the site
/// strictly inside the circle; cocircular sites keep the edge, so no swap ever undoes another.
bool ExactSwapTest(const SFVec3f& org, const SFVec3f& apex, const SFVec3f& dest,
                   const SFVec3f& site) {
    return Orientation(At(apex), At(dest), At(org)) > 0 &&
           InCircleSign(At(org), At(apex), At(dest), At(site)) > 0;
}

} // namespace

RobustInserter::RobustInserter(C2Subdivision& s) : m_subdivision(s) {}

SFVec3f* RobustInserter::NewVertex(const SFVec3f& p) {
    return m_subdivision.NewVertex(p);
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

const SFVec3f* RobustInserter::Insert(SFVec3f* site) {
    C2Edge* e = Locate(*site);
    C2Edge* const sides[3] = {e, EdgeLinks::Lnext(e), EdgeLinks::Lprev(e)};
    for (C2Edge* side : sides) {
        if (SameSite(*side->Org(), *site)) {
            return side->Org();
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
    m_subdivision.ConnectSite(e, site, &ExactSwapTest);
    return nullptr;
}

std::vector<std::pair<const SFVec3f*, const SFVec3f*>>
RobustInserter::EdgesShorterThan(double limit) const {
    std::vector<std::pair<const SFVec3f*, const SFVec3f*>> found;
    for (std::size_t i = 0; i < m_subdivision.GetEdgeCount(); ++i) {
        const C2Edge& e = (*m_subdivision.GetEdgeAt(i))[0];
        if (e.Org2d().DistanceTo(e.Dest2d()) < limit) {
            found.emplace_back(e.Org(), e.Dest());
        }
    }
    return found;
}

} // namespace zq::detail
