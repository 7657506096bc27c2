// C2Subdivision: incremental Delaunay triangulation of height samples in the x-z plane.
#include "c2subdivision.h"

#include "delaunay/edgelinks.h"
#include "delaunay/edgestore.h"
#include "delaunay/pointer_index.h"
#include "delaunay/swap_count.h"
#include "delaunay/walk_mirror.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <functional>

namespace {

using zq::detail::EdgeLinks;

/// Closer than this in x-z, a sample is the vertex it would duplicate.
constexpr double kSameSiteDistance = 1e-5;
/// The longest walk of Locate.
constexpr int kMaxLocateSteps = 50000;

/// True when x is within kSameSiteDistance of either end of e.
bool NearAnEnd(const SFVec2f& x, const C2Edge* e) {
    return zq::detail::Distance(x, EdgeLinks::Org2d(e)) < kSameSiteDistance ||
           zq::detail::Distance(x, EdgeLinks::Dest2d(e)) < kSameSiteDistance;
}

/// The swap test of the constructor: plain floating point, as callers have always had it.
bool NeedsSwap(const SFVec3f& org, const SFVec3f& apex, const SFVec3f& dest, const SFVec3f& site) {
    return SFVec2f::ccw(apex.XZ(), dest.XZ(), org.XZ()) &&
           SFVec2f::InCircle(org.XZ(), apex.XZ(), dest.XZ(), site.XZ());
}

/// The swaps of every constructor so far.
std::atomic<std::size_t> g_constructorSwaps{0};

/// True for the unbounded face of the bare enclosing triangle: its three corners (vertices 0,
/// 1, 2, counter-clockwise) met in clockwise order.
bool IsOuterFace(const std::array<std::size_t, 3>& t) {
    return t[0] < 3 && t[1] < 3 && t[2] < 3 && t[1] == (t[0] + 2) % 3;
}

} // namespace

namespace zq::detail {

std::size_t ConstructorSwaps() {
    return g_constructorSwaps.load(std::memory_order_relaxed);
}

void CountConstructorSwaps(std::size_t count) {
    g_constructorSwaps.fetch_add(count, std::memory_order_relaxed);
}

} // namespace zq::detail

C2Subdivision::C2Subdivision(std::vector<SFVec3f>* points, const SFVec3f& a, const SFVec3f& b,
                             const SFVec3f& c)
    : m_store(std::make_shared<zq::detail::EdgeStore>()), m_startingEdge(nullptr), m_cornerA(a),
      m_cornerB(b), m_cornerC(c) {
    SFVec3f* pa = NewVertex(a);
    SFVec3f* pb = NewVertex(b);
    SFVec3f* pc = NewVertex(c);
    C2Edge::sfSubdivision = this;
    C2Edge* ea = C2QuadEdge::MakeEdge(nullptr, &C2Edge::sfSubdivision);
    ea->EndPoints(pa, pb);
    ea->SetBoundaryEdge(true);
    C2Edge* eb = C2QuadEdge::MakeEdge(nullptr, &C2Edge::sfSubdivision);
    C2Edge::Splice(ea->Sym(), eb);
    eb->EndPoints(pb, pc);
    eb->SetBoundaryEdge(true);
    C2Edge* ec = C2QuadEdge::MakeEdge(nullptr, &C2Edge::sfSubdivision);
    C2Edge::Splice(eb->Sym(), ec);
    ec->EndPoints(pc, pa);
    ec->SetBoundaryEdge(true);
    C2Edge::Splice(ec->Sym(), ea);
    m_startingEdge = ea;
    if (points == nullptr) {
        return;
    }
    // A site adds one vertex and at most four places to the edge list: an on-edge site makes
    // four records and leaves the hole of the one it removes.
    m_vertices.reserve(m_vertices.size() + points->size());
    m_store->Reserve(4 * points->size());
    zq::detail::WalkMirror walk;
    walk.Reserve(3 + 4 * points->size());
    for (C2Edge* e : {ea, eb, ec}) {
        walk.Add(e->Qedge());
    }
    for (C2Edge* e : {ea, eb, ec}) {
        walk.Refresh(e);
        walk.Refresh(EdgeLinks::Sym(e));
    }
    m_walk = &walk;
    for (const SFVec3f& p : *points) {
        short unused = 0;
        InsertSite(p, unused);
        walk.Tidy();
    }
    m_walk = nullptr;
}

C2Subdivision::C2Subdivision(const C2Subdivision& s)
    : m_store(s.m_store), m_startingEdge(s.m_startingEdge), m_cornerA(s.m_cornerA),
      m_cornerB(s.m_cornerB), m_cornerC(s.m_cornerC), m_vertices(s.m_vertices) {}

C2Subdivision::~C2Subdivision() {
    // Nothing may keep pointing here: Connect would register records into a dead subdivision.
    if (C2Edge::sfSubdivision == this) {
        C2Edge::sfSubdivision = nullptr;
    }
}

C2Subdivision& C2Subdivision::operator=(const C2Subdivision& s) {
    m_store = s.m_store;
    m_startingEdge = s.m_startingEdge;
    m_cornerA = s.m_cornerA;
    m_cornerB = s.m_cornerB;
    m_cornerC = s.m_cornerC;
    if (this != &s) {
        m_vertices = s.m_vertices;
    }
    return *this;
}

int C2Subdivision::AddEdge(C2QuadEdge* q) {
    return static_cast<int>(m_store->Append(q));
}

short C2Subdivision::NumEdges() const {
    // The count wraps at 16 bits, as the original's short did.
    return static_cast<short>(static_cast<std::uint16_t>(GetEdgeCount()));
}

C2QuadEdge* C2Subdivision::GetEdge(short i) const {
    return i < 0 ? nullptr : GetEdgeAt(static_cast<std::size_t>(i));
}

void C2Subdivision::DeleteEdge(C2QuadEdge* q) {
    m_store->Remove(q);
}

std::size_t C2Subdivision::GetEdgeCount() const {
    return m_store->Count();
}

C2QuadEdge* C2Subdivision::GetEdgeAt(std::size_t i) const {
    return m_store->At(i);
}

std::size_t C2Subdivision::GetVertexCount() const {
    return m_vertices.size();
}

SFVec3f* C2Subdivision::GetVertex(std::size_t i) const {
    return i < m_vertices.size() ? m_vertices[i] : nullptr;
}

std::vector<std::array<std::size_t, 3>> C2Subdivision::GetTriangles(bool includeCorners) const {
    using zq::detail::PointerIndex;
    const PointerIndex<SFVec3f> indexOf(m_vertices);
    const std::less<const C2Edge*> before{};
    std::vector<std::array<std::size_t, 3>> triangles;
    for (std::size_t r = 0; r < GetEdgeCount(); ++r) {
        C2QuadEdge* q = GetEdgeAt(r);
        if (q == nullptr) {
            continue; // a caller's null entry
        }
        for (C2Edge* e : {&(*q)[0], &(*q)[2]}) {
            // A face is a triangle when three Lnext steps come back; it is reported once, from
            // its first edge in memory.
            const std::array<C2Edge*, 3> side = {e, EdgeLinks::Lnext(e),
                                                 EdgeLinks::Lnext(EdgeLinks::Lnext(e))};
            if (EdgeLinks::Lnext(side[2]) != e || before(side[1], e) || before(side[2], e)) {
                continue;
            }
            std::array<std::size_t, 3> t{};
            bool known = true;
            for (int k = 0; k < 3; ++k) {
                t[k] = indexOf.Find(EdgeLinks::Org(side[k]));
                known = known && t[k] != PointerIndex<SFVec3f>::kMissing;
            }
            const bool hasCorner = t[0] < 3 || t[1] < 3 || t[2] < 3;
            if (known && !IsOuterFace(t) && (includeCorners || !hasCorner)) {
                triangles.push_back(t);
            }
        }
    }
    return triangles;
}

C2QuadEdge* C2Subdivision::NewRecord() {
    return m_store->NewRecord();
}

SFVec3f* C2Subdivision::NewVertex(const SFVec3f& p) {
    SFVec3f* copy = m_store->NewPoint(p);
    m_vertices.push_back(copy);
    return copy;
}

void C2Subdivision::DeleteEdgeList() {
    m_store->DestroyAll();
}

C2Edge* C2Subdivision::Locate(const SFVec2f& x) const {
    // A walk that does not end drops the site without a word: callers rely on the silence.
    return m_walk->Locate(x, m_startingEdge, kMaxLocateSteps, kSameSiteDistance);
}

void C2Subdivision::InsertSite(const SFVec3f& p, short&) {
    const SFVec2f x = p.XZ();
    C2Edge* e = Locate(x);
    if (e == nullptr || NearAnEnd(x, e)) {
        return;
    }
    if (C2Edge::OnEdge(x, e)) {
        // The edge under x goes, leaving a quadrilateral around it.
        e = EdgeLinks::Oprev(e);
        m_walk->Remove(EdgeLinks::Onext(e)->Qedge());
        C2Edge::DeleteEdge(EdgeLinks::Onext(e), &C2Edge::sfSubdivision);
    }
    ConnectSite(e, NewVertex(p));
}

void C2Subdivision::ConnectSite(C2Edge* e, SFVec3f* site) {
    // New records go to this subdivision, as MakeEdge and Connect would register them.
    C2Edge::sfSubdivision = this;
    C2Edge* base = NewWalkedEdge();
    EdgeLinks::SetEnds(base, EdgeLinks::Org(e), site);
    EdgeLinks::Splice(base, e);
    m_startingEdge = base;
    do {
        C2Edge* joined = NewWalkedEdge();
        EdgeLinks::Connect(joined, e, EdgeLinks::Sym(base));
        base = joined;
        e = EdgeLinks::Oprev(base);
    } while (EdgeLinks::Lnext(e) != m_startingEdge);
    std::size_t swaps = 0;
    for (;;) {
        const C2Edge* t = EdgeLinks::Oprev(e);
        if (NeedsSwap(*e->Org(), *EdgeLinks::Sym(t)->Org(), *EdgeLinks::Sym(e)->Org(), *site)) {
            EdgeLinks::Swap(e);
            e = EdgeLinks::Oprev(e);
            ++swaps;
        } else if (EdgeLinks::Onext(e) == m_startingEdge) {
            RefreshWalk(EdgeLinks::Sym(m_startingEdge));
            zq::detail::CountConstructorSwaps(swaps);
            return;
        } else {
            e = EdgeLinks::Lprev(EdgeLinks::Onext(e));
        }
    }
}

C2Edge* C2Subdivision::NewWalkedEdge() {
    C2Edge* e = m_store->NewEdge();
    m_walk->Add(e->Qedge());
    return e;
}

void C2Subdivision::RefreshWalk(C2Edge* spoke) {
    // Only the site's triangles changed: the edges around them took new links, the edges out
    // of their far corners new Onext (those before a spoke) and new Dprev (those on them).
    C2Edge* s = spoke;
    do {
        C2Edge* opposite = EdgeLinks::Lnext(s);
        for (const C2Edge* e : {s, EdgeLinks::Sym(s), opposite, EdgeLinks::Sym(opposite)}) {
            m_walk->Refresh(e);
        }
        s = EdgeLinks::Onext(s);
    } while (s != spoke);
}

SFVec3f C2Subdivision::PointSolutionFor(SFVec2f p, double, double) const {
    const std::vector<SFVec3f>& samples = m_store->Samples();
    const SFVec3f key(p.x, 0.0, p.y);
    const auto shorter = [](const SFVec3f& s, const SFVec3f& k) {
        return s.Magnitude() < k.Magnitude();
    };
    const auto found = std::lower_bound(samples.begin(), samples.end(), key, shorter);
    // With no sample at or after the key the original read past the list; zero instead.
    return found != samples.end() ? *found : SFVec3f::kZero;
}
