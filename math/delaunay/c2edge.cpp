// C2Edge: one directed edge of the quad-edge structure, its navigation and its operators.
#include "quadedge.h"

#include "c2rect.h"
#include "c2subdivision.h"
#include "delaunay/edgelinks.h"
#include "sfvec3f.h"

#include <cmath>

namespace {

/// Closer than this to an end point or to the line, a point is on the edge.
constexpr double kOnEdgeDistance = 1e-6;

using zq::detail::EdgeLinks;

} // namespace

C2Subdivision* C2Edge::sfSubdivision = nullptr;

C2Edge::C2Edge(const C2Edge& e) = default;

bool C2Edge::InRecord() const {
    return m_index >= 0 && m_index <= 3;
}

C2Edge* C2Edge::Rot() const {
    return InRecord() ? EdgeLinks::Rot(this) : nullptr;
}

C2Edge* C2Edge::invRot() const {
    return InRecord() ? EdgeLinks::InvRot(this) : nullptr;
}

C2Edge* C2Edge::Sym() const {
    return InRecord() ? EdgeLinks::Sym(this) : nullptr;
}

C2Edge* C2Edge::Onext() const {
    return m_next;
}

C2Edge* C2Edge::Oprev() const {
    return InRecord() ? EdgeLinks::Oprev(this) : nullptr;
}

C2Edge* C2Edge::Dnext() const {
    return InRecord() ? EdgeLinks::Dnext(this) : nullptr;
}

C2Edge* C2Edge::Dprev() const {
    return InRecord() ? EdgeLinks::Dprev(this) : nullptr;
}

C2Edge* C2Edge::Lnext() const {
    return InRecord() ? EdgeLinks::Lnext(this) : nullptr;
}

C2Edge* C2Edge::Lprev() const {
    return InRecord() ? EdgeLinks::Lprev(this) : nullptr;
}

C2Edge* C2Edge::Rnext() const {
    return InRecord() ? EdgeLinks::Rnext(this) : nullptr;
}

C2Edge* C2Edge::Rprev() const {
    return InRecord() ? EdgeLinks::Rprev(this) : nullptr;
}

SFVec3f* C2Edge::Org() const {
    return m_data;
}

SFVec3f* C2Edge::Dest() const {
    const C2Edge* sym = Sym();
    return sym != nullptr ? sym->m_data : nullptr;
}

SFVec2f C2Edge::Org2d() const {
    return Org()->XZ();
}

SFVec2f C2Edge::Dest2d() const {
    return Dest()->XZ();
}

void C2Edge::EndPoints(SFVec3f* org, SFVec3f* dest) {
    m_data = org;
    if (C2Edge* sym = Sym()) {
        sym->m_data = dest;
    }
}

C2QuadEdge* C2Edge::Qedge() const {
    // Edge 0 is the record's first member: the record starts where it does.
    return InRecord() ? reinterpret_cast<C2QuadEdge*>(EdgeLinks::Sibling(this, -m_index)) : nullptr;
}

void C2Edge::AddRef() {
    ++m_refCount;
}

bool C2Edge::Used() const {
    return m_refCount != 0;
}

void C2Edge::ClearRef() {
    m_refCount = 0;
    m_mark = 0;
}

bool C2Edge::IsBoundaryEdge() const {
    return m_boundary;
}

void C2Edge::SetBoundaryEdge(bool boundary) {
    m_boundary = boundary;
}

void C2Edge::Splice(C2Edge* a, C2Edge* b) {
    EdgeLinks::Splice(a, b);
}

C2Edge* C2Edge::Connect(C2Edge* a, C2Edge* b) {
    C2Edge* e = C2QuadEdge::MakeEdge(nullptr, &sfSubdivision);
    // Only e takes the mark, not its reverse: the mark follows the edges made from marked ones.
    EdgeLinks::Connect(e, a, b);
    return e;
}

void C2Edge::DeleteEdge(C2Edge* e, C2Subdivision** slot) {
    Splice(e, e->Oprev());
    Splice(e->Sym(), e->Sym()->Oprev());
    if (slot != nullptr && *slot != nullptr) {
        (*slot)->DeleteEdge(e->Qedge());
    }
}

void C2Edge::Swap(C2Edge* e) {
    EdgeLinks::Swap(e);
}

int C2Edge::RightOf(const SFVec2f& x, C2Edge* e) {
    return EdgeLinks::RightOf(x, e);
}

int C2Edge::LeftOf(const SFVec2f& x, C2Edge* e) {
    return SFVec2f::ccw(x, e->Org2d(), e->Dest2d());
}

int C2Edge::OnEdge(const SFVec2f& x, C2Edge* e) {
    const SFVec2f org = e->Org2d();
    const SFVec2f dest = e->Dest2d();
    const double t1 = x.DistanceTo(org);
    const double t2 = x.DistanceTo(dest);
    if (t1 < kOnEdgeDistance || t2 < kOnEdgeDistance) {
        return 1;
    }
    const double t3 = org.DistanceTo(dest);
    if (t1 > t3 || t2 > t3) {
        return 0;
    }
    return std::fabs(C2LineEq(org, dest).Eval(x)) < kOnEdgeDistance ? 1 : 0;
}
