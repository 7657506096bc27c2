// FlatTriangulation: a visibility walk, triangle and edge splits, and Lawson flips, all on index
// arrays and exact predicates.
#include "delaunay/flat_triangulation.h"

#include "frame/prefault.h"
#include "sfvec2f.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zq::detail {

FlatTriangulation::FlatTriangulation(std::vector<Site> sites, double shortEdge)
    : m_sites(std::move(sites)), m_shortEdgeSquared(shortEdge * shortEdge) {
    const std::size_t halfEdges = HalfEdgesFor(m_sites.size() - 3);
    m_origin.resize(halfEdges);
    m_twin.resize(halfEdges);
    // Filled as the sites go in: mapped now in one call, the pages do not fault one by one.
    Prefault(m_origin.data(), halfEdges * sizeof(Index));
    Prefault(m_twin.data(), halfEdges * sizeof(Index));
    AddTriangle(0, 1, 2);
    Link(0, kNone);
    Link(1, kNone);
    Link(2, kNone);
}

std::uint32_t FlatTriangulation::Insert(std::uint32_t v) {
    const Located at = Locate(m_sites[v], m_start);
    const Index same = SameSite(at, m_sites[v]);
    if (same != kNone) {
        return same;
    }
    InsertAt(v, at);
    return v;
}

std::uint32_t FlatTriangulation::InsertUnlessNear(const Site& site, double distance,
                                                  std::uint32_t from) {
    const Located at = Locate(site, from == kNone ? m_start : from);
    if (NearNeighbour(at, site, distance)) {
        return kNone;
    }
    const Index v = static_cast<Index>(m_sites.size());
    m_sites.push_back(site);
    InsertAt(v, at);
    return v;
}

void FlatTriangulation::Reserve(std::size_t count) {
    ReserveLarge(m_sites, m_sites.size() + count);
    const std::size_t halfEdges = HalfEdgesFor(m_sites.size() - 3 + count);
    m_origin.reserve(halfEdges);
    m_twin.reserve(halfEdges);
}

void FlatTriangulation::TrianglesAroundNewest(std::vector<std::uint32_t>& out) const {
    // The newest vertex is the origin of Prev(m_start); an inner vertex, so every edge around
    // it has a twin.
    const Index first = static_cast<Index>(Prev(m_start));
    Index e = first;
    do {
        out.push_back(e / 3);
        e = m_twin[Prev(e)];
    } while (e != first);
}

FlatTriangulation::Index FlatTriangulation::SameSite(const Located& at, const Site& site) const {
    const Index first = at.edge - at.edge % 3;
    for (Index k = first; k < first + 3; ++k) {
        const Site& v = m_sites[m_origin[k]];
        if (v.x == site.x && v.y == site.y) {
            return m_origin[k];
        }
    }
    return kNone;
}

void FlatTriangulation::InsertAt(Index v, const Located& at) {
    const Index onEdge = at.onEdge;
    // A site on an edge first splits the triangle, leaving a flat one on that edge, whose flip
    // then splits the neighbour: four triangles around the site.
    const Index base = onEdge != kNone ? onEdge : at.edge - at.edge % 3;
    SplitTriangle(base, v);
    if (onEdge != kNone && m_twin[base] != kNone) {
        const Index across = m_twin[base];
        Flip(base);
        m_pending.push_back(static_cast<Index>(Next(across)));
    }
    m_pending.push_back(base);
    Legalize();
    // Flips keep the site in the triangle of base: the next walk starts beside it.
    m_start = base;
}

bool FlatTriangulation::ClearOfSide(Index h, const Site& site, double distance) const {
    // The site's distance from side a b is its cross product with the side over the side's
    // length. The cross product errs by less than 8 units of its terms; the margin of 1e-9
    // keeps every vertex outside the disk well beyond what DistanceTo's rounding could bring in.
    const Site& a = m_sites[m_origin[h]];
    const Site& b = m_sites[m_origin[Next(h)]];
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double left = dx * (site.y - a.y), right = dy * (site.x - a.x);
    const double bound = 8.0 * kUnitRoundOff * (std::fabs(left) + std::fabs(right));
    const double reach = distance * (1.0 + 1e-9) * std::sqrt(dx * dx + dy * dy);
    return left - right - bound > reach;
}

bool FlatTriangulation::DiskInside(const Located& at, const Site& site, double distance) const {
    const Index first = at.edge - at.edge % 3;
    if (at.onEdge == kNone) {
        return ClearOfSide(first, site, distance) && ClearOfSide(first + 1, site, distance) &&
               ClearOfSide(first + 2, site, distance);
    }
    // A site on an edge (common on grids): the disk straddles it, and lies in the edge's two
    // triangles when it is clear of their four other sides.
    const Index h = at.onEdge, g = m_twin[h];
    return g != kNone && ClearOfSide(static_cast<Index>(Next(h)), site, distance) &&
           ClearOfSide(static_cast<Index>(Prev(h)), site, distance) &&
           ClearOfSide(static_cast<Index>(Next(g)), site, distance) &&
           ClearOfSide(static_cast<Index>(Prev(g)), site, distance);
}

bool FlatTriangulation::NearNeighbour(const Located& at, const Site& site, double distance) {
    // The new vertex would be joined to the corners of its triangle and of every triangle
    // whose circle holds it strictly: those triangles form a tree across their shared edges,
    // walked here outward from the site's triangle.
    const SFVec2f s(site.x, site.y);
    const auto isClose = [&](Index v) {
        return s.DistanceTo(SFVec2f(m_sites[v].x, m_sites[v].y)) < distance;
    };
    const Index first = at.edge - at.edge % 3;
    for (Index k = first; k < first + 3; ++k) {
        if (isClose(m_origin[k])) {
            return true;
        }
    }
    if (DiskInside(at, site, distance)) {
        return false;
    }
    m_pending.assign({first, first + 1, first + 2});
    while (!m_pending.empty()) {
        const Index g = m_twin[m_pending.back()];
        m_pending.pop_back();
        if (g == kNone) {
            continue;
        }
        const Index n = static_cast<Index>(Next(g)), p = static_cast<Index>(Prev(g));
        if (InCircleSign(m_sites[m_origin[g]], m_sites[m_origin[n]], m_sites[m_origin[p]], site) >
            0) {
            if (isClose(m_origin[p])) {
                m_pending.clear();
                return true;
            }
            m_pending.push_back(n);
            m_pending.push_back(p);
        }
    }
    return false;
}

void FlatTriangulation::NoteEdge(Index v, Index w) {
    const double dx = m_sites[w].x - m_sites[v].x, dy = m_sites[w].y - m_sites[v].y;
    if (dx * dx + dy * dy < m_shortEdgeSquared) {
        m_shortEdges.emplace_back(v, w);
    }
}

FlatTriangulation::Located FlatTriangulation::Locate(const Site& site, Index from) const {
    Index e = from;
    int sideOfE = Side(e, site);
    if (sideOfE < 0 && m_twin[e] != kNone) {
        e = m_twin[e];
        sideOfE = 1;
    }
    // The site is not right of e, the edge the walk came in by. With exact tests on a Delaunay
    // triangulation this walk cannot come back to a triangle it left; the two exits are tried
    // in alternating order all the same, which keeps a long walk off one side.
    for (unsigned step = 0;; ++step) {
        Index first = static_cast<Index>(Next(e));
        Index second = static_cast<Index>(Prev(e));
        if ((step & 1) != 0) {
            std::swap(first, second);
        }
        const int sideOfFirst = Side(first, site);
        if (sideOfFirst < 0 && m_twin[first] != kNone) {
            e = m_twin[first];
            sideOfE = 1;
            continue;
        }
        const int sideOfSecond = Side(second, site);
        if (sideOfSecond < 0 && m_twin[second] != kNone) {
            e = m_twin[second];
            sideOfE = 1;
            continue;
        }
        const Index on = sideOfE == 0        ? e
                         : sideOfFirst == 0  ? first
                         : sideOfSecond == 0 ? second
                                             : kNone;
        return {e, on};
    }
}

FlatTriangulation::Index FlatTriangulation::AddTriangle(Index a, Index b, Index c) {
    if (m_halfEdges == m_origin.size()) {
        // Grown one insertion at a time: into the room reserved, else room for as many again.
        const std::size_t size = std::max(2 * m_halfEdges, m_origin.capacity());
        m_origin.resize(size);
        m_twin.resize(size);
    }
    const Index h = static_cast<Index>(m_halfEdges);
    m_origin[h] = a;
    m_origin[h + 1] = b;
    m_origin[h + 2] = c;
    m_halfEdges += 3;
    return h;
}

void FlatTriangulation::Link(Index h, Index g) {
    m_twin[h] = g;
    if (g != kNone) {
        m_twin[g] = h;
    }
}

void FlatTriangulation::SplitTriangle(Index h, Index v) {
    // h: a to b, n: b to c, p: c to a. The triangle keeps a, b and takes v; two new ones hold
    // b, c, v and c, a, v.
    const Index n = static_cast<Index>(Next(h)), p = static_cast<Index>(Prev(h));
    const Index a = m_origin[h], b = m_origin[n], c = m_origin[p];
    const Index outerN = m_twin[n], outerP = m_twin[p];
    m_origin[p] = v;
    NoteEdge(v, a);
    NoteEdge(v, b);
    NoteEdge(v, c);
    const Index t1 = AddTriangle(b, c, v);
    const Index t2 = AddTriangle(c, a, v);
    Link(t1, outerN);
    Link(t2, outerP);
    Link(n, t1 + 2);
    Link(p, t2 + 1);
    Link(t1 + 1, t2 + 2);
    m_pending.push_back(t1);
    m_pending.push_back(t2);
}

void FlatTriangulation::Flip(Index h) {
    // Before: h: a to b, apex p; its twin g: b to a, apex q. After: h: q to b and g: p to a,
    // the new diagonal joining p and q between Prev(h) and Prev(g).
    const Index g = m_twin[h];
    const Index hp = static_cast<Index>(Prev(h)), gp = static_cast<Index>(Prev(g));
    const Index p = m_origin[hp], q = m_origin[gp];
    const Index outerH = m_twin[gp], outerG = m_twin[hp];
    m_origin[h] = q;
    m_origin[g] = p;
    NoteEdge(p, q);
    Link(h, outerH);
    Link(g, outerG);
    Link(hp, gp);
}

void FlatTriangulation::Legalize() {
    while (!m_pending.empty()) {
        const Index h = m_pending.back();
        m_pending.pop_back();
        const Index g = m_twin[h];
        if (g == kNone) {
            continue;
        }
        const Site& a = m_sites[m_origin[h]];
        const Site& b = m_sites[m_origin[Next(h)]];
        const Site& p = m_sites[m_origin[Prev(h)]];
        const Site& q = m_sites[m_origin[Prev(g)]];
        // Cocircular sites keep the edge, so no flip ever undoes another.
        if (InCircleSign(a, b, p, q) > 0) {
            Flip(h);
            m_pending.push_back(h);
            m_pending.push_back(static_cast<Index>(Next(g)));
        }
    }
}

} // namespace zq::detail
