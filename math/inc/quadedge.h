// quadedge.h: the quad-edge structure of the triangulation.
#ifndef ZQMATH_QUADEDGE_H
#define ZQMATH_QUADEDGE_H

#include "sfvec2f.h"
#include "zqexport.h"
#include "zqplatform.h"

#include <cstddef>
#include <cstdint>

class C2QuadEdge;
class C2Subdivision;
class SFVec3f;

namespace zq::detail {
class EdgeStore;
struct EdgeLinks;
} // namespace zq::detail

/// One directed edge of a quad-edge record: its Onext link, its origin vertex and two marks.
/// Planar tests work in the x-z plane: a vertex (x, y, z) is the site (x, z), y its height.
/// A stand-alone edge (index -1, in no record) has no siblings: Rot, Sym, Qedge and every
/// navigation through them give null.
class ZQMATH_API C2Edge {
public:
    /// Counts 0, not boundary, index -1, no link, no vertex, planar point (0, 0). Inline: large
    /// builds make millions of records.
    constexpr C2Edge()
        : m_refCount(0), m_mark(0), m_boundary(false), m_index(-1), m_walkLine(0), m_next(nullptr),
          m_data(nullptr), m_planar(0.0, 0.0) {}
    /// Copies every field, link and index included.
    C2Edge(const C2Edge& e);

    /// The dual edge, rotated a quarter turn counter-clockwise.
    C2Edge* Rot() const;
    /// The dual edge, rotated a quarter turn clockwise.
    C2Edge* invRot() const;
    /// The same edge, reversed.
    C2Edge* Sym() const;
    /// The next edge counter-clockwise around the same origin.
    C2Edge* Onext() const;
    /// The next edge clockwise around the same origin.
    C2Edge* Oprev() const;
    /// The next edge counter-clockwise around the same destination.
    C2Edge* Dnext() const;
    /// The next edge clockwise around the same destination.
    C2Edge* Dprev() const;
    /// The next edge counter-clockwise around the left face.
    C2Edge* Lnext() const;
    /// The previous edge around the left face.
    C2Edge* Lprev() const;
    /// The next edge counter-clockwise around the right face.
    C2Edge* Rnext() const;
    /// The previous edge around the right face.
    C2Edge* Rprev() const;

    /// The origin vertex (not owned).
    SFVec3f* Org() const;
    /// The destination vertex, Sym()'s origin.
    SFVec3f* Dest() const;
    /// (x, z) of the origin.
    SFVec2f Org2d() const;
    /// (x, z) of the destination.
    SFVec2f Dest2d() const;
    /// Sets this edge's origin to org and Sym()'s origin to dest.
    void EndPoints(SFVec3f* org, SFVec3f* dest);
    /// The record that holds this edge.
    C2QuadEdge* Qedge() const;

    /// Counts one more use.
    void AddRef();
    /// True while the use count is nonzero.
    bool Used() const;
    /// Clears the use count and the second mark.
    void ClearRef();
    bool IsBoundaryEdge() const;
    void SetBoundaryEdge(bool boundary);

    /// Exchanges the Onext rings of a and b (or splits them): its own inverse.
    static void Splice(C2Edge* a, C2Edge* b);
    /// A new edge from a's destination to b's origin, with the left face of both, registered in
    /// the subdivision last given to MakeEdge; marked boundary when a or b is, its Sym not.
    static C2Edge* Connect(C2Edge* a, C2Edge* b);
    /// Unlinks e, then removes its record from the edge list of *slot and destroys it; a record
    /// that list does not hold stays allocated.
    static void DeleteEdge(C2Edge* e, C2Subdivision** slot);
    /// Turns e to the other diagonal of the quadrilateral of its two faces; the boundary mark
    /// stays.
    static void Swap(C2Edge* e);
    /// 1 when x lies strictly right of e (SFVec2f::ccw, no tolerance), else 0.
    static int RightOf(const SFVec2f& x, C2Edge* e);
    /// 1 when x lies strictly left of e, else 0.
    static int LeftOf(const SFVec2f& x, C2Edge* e);
    /// 1 when x is within 1e-6 of an end, or within 1e-6 of e's line and no farther from
    /// either end than the edge is long; else 0.
    static int OnEdge(const SFVec2f& x, C2Edge* e);

private:
    friend class C2QuadEdge;
    friend class C2Subdivision;
    friend struct zq::detail::EdgeLinks;

    /// True for an edge inside a record (index 0..3), the only kind that can be navigated.
    bool InRecord() const;

    std::uint16_t m_refCount;
    std::uint16_t m_mark;
    bool m_boundary;
    std::int32_t m_index;
    /// Where the constructor's walk keeps a copy of this record's primal edges (edge 0 only);
    /// it sits in room the alignment of m_next leaves.
    std::uint32_t m_walkLine;
    C2Edge* m_next;
    SFVec3f* m_data;
    SFVec2f m_planar;

    /// The subdivision that Connect registers new records into.
    static C2Subdivision* sfSubdivision;
};

/// One undirected edge: its four directed edges stored contiguously (the edge, its rotated
/// dual, its reverse, the reverse dual) and a traversal stamp. Records are never copied.
class ZQMATH_API C2QuadEdge {
public:
    /// An isolated edge with no end points; stamp 0.
    C2QuadEdge();
    /// Unsupported: throws "Not yet implemented" (records are never copied).
    C2QuadEdge(const C2QuadEdge& q);
    /// Unsupported: throws "Not yet implemented".
    C2QuadEdge& operator=(const C2QuadEdge& q);
    /// Identity: true only for the same record.
    bool operator==(const C2QuadEdge& q) const;

    /// Edge i (0..3); any other index throws CZqMathException record 4.
    C2Edge& operator[](short i);
    /// Clears both counts of all four edges.
    void ClearUsed();
    /// 1 and stores stamp when it differs from the stored one; 0 when it is the same.
    int TimeStamp(DWORD stamp);

    /// Stores s into *slot when s is not null, then makes a record, appends it to the edge list
    /// of *slot and returns its edge 0. With no subdivision in *slot the record is registered
    /// nowhere and the caller deletes it (delete e->Qedge()).
    static C2Edge* MakeEdge(C2Subdivision* s, C2Subdivision** slot);

private:
    friend class C2Edge;
    friend class zq::detail::EdgeStore;

    C2Edge m_edges[4];
    DWORD m_timeStamp;
    /// Where the record sits in its subdivision's edge list (low 31 bits), so that removal
    /// needs no search, and whether an arena made it (top bit): 200 bytes a record in all.
    std::uint32_t m_place;
};

#endif
