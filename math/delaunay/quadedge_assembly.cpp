// QuadEdgeAssembly: the records of a flat triangulation, linked straight from its triangles.
#include "delaunay/quadedge_assembly.h"

#include "delaunay/edgelinks.h"
#include "delaunay/two_halves.h"

#include <algorithm>

namespace zq::detail {

namespace {

/// Records a thread makes between two looks at the shared counter.
constexpr std::size_t kRecordBlock = 4096;

} // namespace

QuadEdgeAssembly::QuadEdgeAssembly(std::size_t sites)
    : m_store(std::make_shared<EdgeStore>()), m_records(3 * sites + 3) {
    // n sites make 3n + 3 edges.
    m_store->ReserveRun(m_records);
}

void QuadEdgeAssembly::MakeRecords() {
    for (;;) {
        const std::size_t begin = m_nextRecord.fetch_add(kRecordBlock);
        if (begin >= m_records) {
            return;
        }
        m_store->MakeRun(begin, std::min(begin + kRecordBlock, m_records));
    }
}

void QuadEdgeAssembly::Assemble(C2Subdivision& s, const FlatTriangulation& flat,
                                const std::array<SFVec3f, 3>& corners,
                                const std::vector<double>& heights,
                                const std::vector<std::uint32_t>& order) {
    Vertices(s, flat, corners, heights, order);
    Number(flat);
    InTwoHalves(flat.HalfEdgeCount(),
                [&](std::size_t begin, std::size_t end) { Fill(flat, begin, end); });
    s.m_store = m_store;
    s.m_startingEdge = EdgeOf(m_codeOf[FlatTriangulation::Next(flat.Start())]);
}

void QuadEdgeAssembly::Vertices(C2Subdivision& s, const FlatTriangulation& flat,
                                const std::array<SFVec3f, 3>& corners,
                                const std::vector<double>& heights,
                                const std::vector<std::uint32_t>& order) {
    // The copies are laid out in the order of insertion, so that neighbours lie together, and
    // made from the flat sites and the heights, both read in that order.
    m_store->ReservePointRun(3 + order.size());
    s.m_vertices.assign(3 + order.size(), nullptr);
    for (std::size_t v = 0; v < 3; ++v) {
        s.m_vertices[v] = m_store->MakePoint(v, corners[v]);
    }
    InTwoHalves(order.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t j = begin; j < end; ++j) {
            const Site& site = flat.Vertex(3 + j);
            SFVec3f* p = m_store->MakePoint(3 + j, SFVec3f(site.x, heights[j], site.y));
            s.m_vertices[3 + order[j]] = p;
        }
    });
}

void QuadEdgeAssembly::Number(const FlatTriangulation& flat) {
    // An edge's record holds its first half-edge, in index order, as edge 0 and the twin as
    // edge 2: the records are then filled nearly in order. Each half of the half-edges numbers
    // its own, the upper one starting after the lower one's count.
    const std::size_t count = flat.HalfEdgeCount();
    const auto first = [&flat](std::size_t h) {
        return flat.Twin(h) == FlatTriangulation::kNone || flat.Twin(h) > h;
    };
    std::size_t lower = 0;
    for (std::size_t h = 0; h < LowerHalfEnd(count); ++h) {
        lower += first(h) ? 1 : 0;
    }
    // Every entry is written once below: no zeroing pass first.
    m_codeOf.reset(new std::uint32_t[count]);
    InTwoHalves(count, [&](std::size_t begin, std::size_t end) {
        std::uint32_t record = static_cast<std::uint32_t>(begin == 0 ? 0 : lower);
        for (std::size_t h = begin; h < end; ++h) {
            if (!first(h)) {
                continue;
            }
            const std::uint32_t code = 2 * record++;
            m_codeOf[h] = code;
            if (flat.Twin(h) != FlatTriangulation::kNone) {
                m_codeOf[flat.Twin(h)] = code + 1;
            } else {
                m_outer[flat.Origin(h)] = EdgeOf(code);
            }
        }
    });
    // Every edge has two half-edges but the enclosing triangle's three, which have one.
    m_store->Truncate((count + 3) / 2);
}

C2Edge* QuadEdgeAssembly::EdgeOf(std::uint32_t code) const {
    return m_store->RunEdge(code >> 1, 2 * static_cast<int>(code & 1));
}

void QuadEdgeAssembly::Fill(const FlatTriangulation& flat, std::size_t begin,
                            std::size_t end) const {
    // Half-edge h writes only its own directed edge and, on the enclosing triangle, that
    // edge's reverse: ranges of half-edges write disjoint fields.
    for (std::size_t h = begin; h < end; ++h) {
        C2Edge* e = EdgeOf(m_codeOf[h]);
        EdgeLinks::SetOrg(e, m_store->RunPoint(flat.Origin(h)));
        LinkAroundTriangle(h);
        if (flat.Twin(h) == FlatTriangulation::kNone) {
            e->SetBoundaryEdge(true);
            EdgeLinks::SetOrg(EdgeLinks::Sym(e),
                              m_store->RunPoint(flat.Origin(FlatTriangulation::Next(h))));
            LinkAroundOuterFace(flat.Origin(h));
        }
    }
}

void QuadEdgeAssembly::LinkAroundTriangle(std::size_t h) const {
    // Around the origin, the edge after a to b is a to c, c the triangle's third corner: the
    // reverse of the previous half-edge. Around the left face, the next edge is the next
    // half-edge; the dual ring of InvRot(e) follows it, since Lnext is InvRot, Onext, Rot.
    C2Edge* e = EdgeOf(m_codeOf[h]);
    EdgeLinks::SetNext(e, EdgeLinks::Sym(EdgeOf(m_codeOf[FlatTriangulation::Prev(h)])));
    EdgeLinks::SetNext(EdgeLinks::InvRot(e),
                       EdgeLinks::InvRot(EdgeOf(m_codeOf[FlatTriangulation::Next(h)])));
}

void QuadEdgeAssembly::LinkAroundOuterFace(std::size_t c) const {
    // The reverse of the outer edge c to c + 1 has the outer face on its left: around c + 1 it
    // turns on to the outer edge from there, and along the outer face it comes after the
    // reverse of the outer edge into c.
    C2Edge* reverse = EdgeLinks::Sym(m_outer[c]);
    EdgeLinks::SetNext(reverse, m_outer[(c + 1) % 3]);
    EdgeLinks::SetNext(EdgeLinks::InvRot(reverse),
                       EdgeLinks::InvRot(EdgeLinks::Sym(m_outer[(c + 2) % 3])));
}

} // namespace zq::detail
