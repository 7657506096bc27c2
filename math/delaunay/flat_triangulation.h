// flat_triangulation.h: a Delaunay triangulation in flat index arrays, for fast bulk builds.
// Not installed.
#ifndef ZQMATH_FLAT_TRIANGULATION_H
#define ZQMATH_FLAT_TRIANGULATION_H

#include "delaunay/robust_predicates.h"
#include "delaunay/uninitialized.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zq::detail {

/// Sites triangulated one at a time with exact predicates. Triangle t owns the half-edges 3t,
/// 3t + 1 and 3t + 2, counter-clockwise; each half-edge knows its origin vertex and its twin,
/// the same edge in the neighbouring triangle. Vertices 0, 1, 2 are the enclosing triangle,
/// whose three edges alone have no twin. About 64 bytes a site, against the 600 of quad-edge
/// records: the insertions run in cache.
class FlatTriangulation {
public:
    /// No twin: an edge of the enclosing triangle.
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    /// Vertices 0, 1, 2 of sites make the enclosing triangle (counter-clockwise); each of the
    /// others lies strictly inside it and waits for Insert. Edges shorter than shortEdge are
    /// reported.
    FlatTriangulation(std::vector<Site> sites, double shortEdge);

    /// Adds vertex v (3 or more, at most once) and restores the Delaunay property (cocircular
    /// sites keep their edge). Returns v, or the vertex already in with the same coordinates
    /// (v is then left out).
    std::uint32_t Insert(std::uint32_t v);
    /// Adds site as a new vertex, strictly inside the enclosing triangle, unless a vertex lies
    /// closer than distance (as SFVec2f::DistanceTo measures); returns the new vertex or kNone.
    /// The search walks from half-edge from, or from the newest vertex's star when it is kNone.
    std::uint32_t InsertUnlessNear(const Site& site, double distance, std::uint32_t from);
    /// Makes room for count more vertices.
    void Reserve(std::size_t count);
    /// Appends the triangles around the newest vertex to out, counter-clockwise.
    void TrianglesAroundNewest(std::vector<std::uint32_t>& out) const;
    /// Frees the list of short edges.
    void ForgetShortEdges() { std::vector<std::pair<Index, Index>>().swap(m_shortEdges); }

    /// The site of vertex v.
    const Site& Vertex(std::size_t v) const { return m_sites[v]; }
    /// The number of vertices, the enclosing triangle's included.
    std::size_t VertexCount() const { return m_sites.size(); }
    /// The origins of the half-edges, HalfEdgeCount() of them.
    const std::uint32_t* Origins() const { return m_origin.data(); }
    /// The twins of the half-edges.
    const std::uint32_t* Twins() const { return m_twin.data(); }
    /// The number of half-edges: three a triangle.
    std::size_t HalfEdgeCount() const { return m_halfEdges; }
    /// The half-edges once n sites are in: each site adds two triangles to the enclosing one.
    static constexpr std::size_t HalfEdgesFor(std::size_t n) { return 3 + 6 * n; }
    /// The edges of halfEdges half-edges: two each, but the enclosing triangle's three have one.
    static constexpr std::size_t EdgesOf(std::size_t halfEdges) { return (halfEdges + 3) / 2; }
    /// The origin vertex of half-edge h.
    std::uint32_t Origin(std::size_t h) const { return m_origin[h]; }
    /// The twin of h, or kNone.
    std::uint32_t Twin(std::size_t h) const { return m_twin[h]; }
    /// The next half-edge counter-clockwise around h's triangle.
    static std::size_t Next(std::size_t h) { return h % 3 == 2 ? h - 2 : h + 1; }
    /// The previous half-edge around h's triangle.
    static std::size_t Prev(std::size_t h) { return h % 3 == 0 ? h + 2 : h - 1; }
    /// A half-edge of a triangle of the newest vertex, that vertex its apex (0 before any).
    std::size_t Start() const { return m_start; }
    /// The pairs of vertices that an edge shorter than the short edge has joined, at any time.
    /// Every edge is made at the insertion of one of its ends, so each edge of the
    /// triangulation is among them (with repeats, and edges flipped away since).
    const std::vector<std::pair<std::uint32_t, std::uint32_t>>& ShortEdges() const {
        return m_shortEdges;
    }

private:
    using Index = std::uint32_t;

    /// Where a walk from the newest vertex's star ends: a half-edge of the triangle whose
    /// closure holds the site, and the half-edge of that triangle through the site (or kNone).
    struct Located {
        Index edge;
        Index onEdge;
    };
    /// The triangle of site, walking from half-edge from.
    Located Locate(const Site& site, Index from) const;
    /// The vertex of at's triangle with the coordinates of site, or kNone.
    Index SameSite(const Located& at, const Site& site) const;
    /// Inserts vertex v, which lies in the closure of at's triangle and is no vertex yet.
    void InsertAt(Index v, const Located& at);
    /// True when a vertex that v would be joined to, inserted at at, lies closer to site than
    /// distance: the nearest vertex is always among them.
    bool NearNeighbour(const Located& at, const Site& site, double distance);
    /// True when site lies left of half-edge h by more than distance, with a margin for
    /// rounding.
    bool ClearOfSide(Index h, const Site& site, double distance) const;
    /// True when the disk of radius distance about site lies inside at's triangle, or inside
    /// the two triangles of its edge when the site is on one, clear of their corners: no
    /// vertex then lies nearer than distance.
    bool DiskInside(const Located& at, const Site& site, double distance) const;
    /// The orientation of site against half-edge h.
    int Side(Index h, const Site& site) const {
        return Orientation(m_sites[m_origin[h]], m_sites[m_origin[Next(h)]], site);
    }
    /// Makes a triangle of the three vertices, its twins unset (the caller links all three);
    /// returns its first half-edge.
    Index AddTriangle(Index a, Index b, Index c);
    /// Notes the new edge v w when it is short.
    void NoteEdge(Index v, Index w);
    /// Makes h and g twins (g may be kNone).
    void Link(Index h, Index g);
    /// Splits the triangle of h at the new vertex v; leaves the new triangles' outer edges to
    /// check.
    void SplitTriangle(Index h, Index v);
    /// Turns the edge h to the other diagonal of its quadrilateral; h then joins the far
    /// vertex to h's old destination, its twin the apex to h's old origin.
    void Flip(Index h);
    /// Flips the edges to check while the vertex across is strictly inside the circle.
    void Legalize();

    std::vector<Site> m_sites;
    /// Both sized ahead of the half-edges in use: filled without a capacity check per value.
    UninitializedVector<Index> m_origin;
    UninitializedVector<Index> m_twin;
    std::size_t m_halfEdges = 0;
    /// Edges whose Delaunay property is in doubt, each with the new vertex as its apex.
    std::vector<Index> m_pending;
    /// Where the next walk starts: a half-edge of the newest vertex's star.
    Index m_start = 0;
    double m_shortEdgeSquared;
    std::vector<std::pair<Index, Index>> m_shortEdges;
};

} // namespace zq::detail

#endif
