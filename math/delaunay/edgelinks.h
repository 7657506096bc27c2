// edgelinks.h: unchecked quad-edge navigation, inlined where the triangulation runs. Not installed.
#ifndef ZQMATH_EDGELINKS_H
#define ZQMATH_EDGELINKS_H

#include "quadedge.h"
#include "sfvec3f.h"
#include "vector/planar.h"

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
    /// (x, z) of e's origin.
    static SFVec2f Org2d(const C2Edge* e) { return SFVec2f(e->m_data->x, e->m_data->z); }
    /// (x, z) of e's destination.
    static SFVec2f Dest2d(const C2Edge* e) { return Org2d(Sym(e)); }
    /// 1 when x lies strictly right of e, else 0.
    static int RightOf(const SFVec2f& x, const C2Edge* e) { return Ccw(x, Dest2d(e), Org2d(e)); }
};

} // namespace zq::detail

#endif
