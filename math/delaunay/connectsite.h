// connectsite.h: the star and swaps shared by both ways of inserting a site. Not installed.
#ifndef ZQMATH_CONNECTSITE_H
#define ZQMATH_CONNECTSITE_H

#include "c2subdivision.h"
#include "delaunay/edgelinks.h"
#include "delaunay/edgestore.h"

// A template, so that each caller's swap test is inlined into the loop.
template <class SwapTest>
void C2Subdivision::ConnectSite(C2Edge* e, SFVec3f* site, SwapTest needsSwap) {
    using Links = zq::detail::EdgeLinks;
    // New records go to this subdivision, as MakeEdge and Connect would register them.
    C2Edge::sfSubdivision = this;
    C2Edge* base = m_store->NewEdge();
    Links::SetEnds(base, Links::Org(e), site);
    Links::Splice(base, e);
    m_startingEdge = base;
    do {
        C2Edge* joined = m_store->NewEdge();
        Links::Connect(joined, e, Links::Sym(base));
        base = joined;
        e = Links::Oprev(base);
    } while (Links::Lnext(e) != m_startingEdge);
    for (;;) {
        const C2Edge* t = Links::Oprev(e);
        if (needsSwap(*e->Org(), *Links::Sym(t)->Org(), *Links::Sym(e)->Org(), *site)) {
            Links::Swap(e);
            e = Links::Oprev(e);
        } else if (Links::Onext(e) == m_startingEdge) {
            return;
        } else {
            e = Links::Lprev(Links::Onext(e));
        }
    }
}

#endif
