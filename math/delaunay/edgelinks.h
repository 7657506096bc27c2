// edgelinks.h: unchecked quad-edge navigation, inlined where the triangulation runs. Not installed.
#ifndef ZQMATH_EDGELINKS_H
#define ZQMATH_EDGELINKS_H

#include "quadedge.h"
#include "sfvec3f.h"
#include "vector/planar.h"

#include <cstdint>

namespace zq::detail {

/// Navigation of edges that lie inside a record (index 0..3): pure pointer arithmetic on the
/// contiguous four edges and the Onext links, which inside records are never null.
struct EdgeLinks {
    /// The edge k places after e in its record.
    static C2Edge* Sibling(const C2Edge* e, int k) {
        return const_cast<C2Edge*>(e) - e->m_index + ((e->m_index + k) & 3);
    }
    static C2Edge* Rot(const C2Edge* e) { return Sibling(e, 1); }
    static C2Edge* Sym(const C2Edge* e) { return Sibling(e, 2); }
    static C2Edge* InvRot(const C2Edge* e) { return Sibling(e, 3); }
    static C2Edge* Onext(const C2Edge* e) { return e->m_next; }
    static C2Edge* Oprev(const C2Edge* e) { return Rot(Onext(Rot(e))); }
    static C2Edge* Dnext(const C2Edge* e) { return Sym(Onext(Sym(e))); }
    static C2Edge* Dprev(const C2Edge* e) { return InvRot(Onext(InvRot(e))); }
    static C2Edge* Lnext(const C2Edge* e) { return Rot(Onext(InvRot(e))); }
    static C2Edge* Lprev(const C2Edge* e) { return Sym(Onext(e)); }
    static C2Edge* Rnext(const C2Edge* e) { return InvRot(Onext(Rot(e))); }
    static C2Edge* Rprev(const C2Edge* e) { return Onext(Sym(e)); }
    /// e's position 0..3 in its record.
    static int Index(const C2Edge* e) { return e->m_index; }
    /// The walk's line of e's record.
    static std::uint32_t WalkLine(const C2Edge* e) { return Sibling(e, -e->m_index)->m_walkLine; }
    /// Sets the walk's line of the record whose edge 0 is e.
    static void SetWalkLine(C2Edge* e, std::uint32_t line) { e->m_walkLine = line; }
    /// e's origin vertex.
    static SFVec3f* Org(const C2Edge* e) { return e->m_data; }
    /// e's destination vertex.
    static SFVec3f* Dest(const C2Edge* e) { return Sym(e)->m_data; }
    /// Sets e's origin vertex.
    static void SetOrg(C2Edge* e, SFVec3f* org) { e->m_data = org; }
    /// Sets e's origin and destination vertices.
    static void SetEnds(C2Edge* e, SFVec3f* org, SFVec3f* dest) {
        e->m_data = org;
        Sym(e)->m_data = dest;
    }
    /// Makes next the edge after e counter-clockwise around e's origin (no ring is kept whole).
    static void SetNext(C2Edge* e, C2Edge* next) { e->m_next = next; }
    /// (x, z) of e's origin.
    static SFVec2f Org2d(const C2Edge* e) { return SFVec2f(e->m_data->x, e->m_data->z); }
    /// (x, z) of e's destination.
    static SFVec2f Dest2d(const C2Edge* e) { return Org2d(Sym(e)); }
    /// Exchanges the Onext rings of a and b, and those of their duals. All four links are read
    /// before any is written: when a primal edge meets a dual one, alpha or beta may be a or b.
    static void Splice(C2Edge* a, C2Edge* b) {
        C2Edge* alpha = Rot(a->m_next);
        C2Edge* beta = Rot(b->m_next);
        C2Edge* const aNext = a->m_next;
        C2Edge* const bNext = b->m_next;
        C2Edge* const alphaNext = alpha->m_next;
        C2Edge* const betaNext = beta->m_next;
        a->m_next = bNext;
        b->m_next = aNext;
        alpha->m_next = betaNext;
        beta->m_next = alphaNext;
    }
    /// Makes the fresh edge e join a's destination to b's origin, with the left face of both;
    /// e takes the boundary mark when a or b has it.
    static void Connect(C2Edge* e, C2Edge* a, C2Edge* b) {
        Splice(e, Lnext(a));
        Splice(Sym(e), b);
        SetEnds(e, Dest(a), Org(b));
        if (a->m_boundary || b->m_boundary) {
            e->m_boundary = true;
        }
    }
    /// Turns e to the other diagonal of the quadrilateral of its two faces.
    static void Swap(C2Edge* e) {
        C2Edge* a = Oprev(e);
        C2Edge* b = Oprev(Sym(e));
        Splice(e, a);
        Splice(Sym(e), b);
        Splice(e, Lnext(a));
        Splice(Sym(e), Lnext(b));
        SetEnds(e, Dest(a), Dest(b));
    }
    /// 1 when x lies strictly right of e, else 0.
    static int RightOf(const SFVec2f& x, const C2Edge* e) { return Ccw(x, Dest2d(e), Org2d(e)); }
};

} // namespace zq::detail

#endif
