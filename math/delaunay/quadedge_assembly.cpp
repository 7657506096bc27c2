// QuadEdgeAssembly: the records of a flat triangulation, linked straight from its triangles.
#include "delaunay/quadedge_assembly.h"

#include "delaunay/edgelinks.h"
#include "delaunay/two_halves.h"
#include "frame/prefault.h"

#include <algorithm>

namespace zq::detail {

namespace {

/// Records a thread makes between two looks at the shared counter.
constexpr std::size_t kRecordBlock = 4096;
/// Bytes of other fresh memory a thread maps between two looks at it.
constexpr std::size_t kFreshBlock = std::size_t(1) << 20;

} // namespace

QuadEdgeAssembly::QuadEdgeAssembly(std::size_t sites, bool helped)
    : m_store(std::make_shared<EdgeStore>()),
      m_records(FlatTriangulation::EdgesOf(FlatTriangulation::HalfEdgesFor(sites))),
      m_helped(helped), m_codeOf(new std::uint32_t[FlatTriangulation::HalfEdgesFor(sites)]) {
    m_store->ReserveRun(m_records);
    AddFresh(m_store->ReservePointRun(3 + sites), (3 + sites) * sizeof(SFVec3f));
    m_vertices.reserve(3 + sites);
    AddFresh(m_vertices.data(), m_vertices.capacity() * sizeof(SFVec3f*));
    AddFresh(m_codeOf.get(), FlatTriangulation::HalfEdgesFor(sites) * sizeof(std::uint32_t));
}

void QuadEdgeAssembly::AddFresh(void* begin, std::size_t bytes) {
    auto* first = static_cast<unsigned char*>(begin);
    for (std::size_t done = 0; done < bytes; done += kFreshBlock) {
        m_fresh.emplace_back(first + done, std::min(kFreshBlock, bytes - done));
    }
}

void QuadEdgeAssembly::Prepare() {
    // Fresh memory costs a page fault per page at its first write: mapped here, on threads
    // that would otherwise wait, its pages are ready when Assemble writes them.
    const std::size_t recordBlocks = (m_records + kRecordBlock - 1) / kRecordBlock;
    for (;;) {
        const std::size_t block = m_nextBlock.fetch_add(1);
        if (block < recordBlocks) {
            const std::size_t begin = block * kRecordBlock;
            m_store->MakeRun(begin, std::min(begin + kRecordBlock, m_records));
        } else if (block - recordBlocks < m_fresh.size()) {
            Prefault(m_fresh[block - recordBlocks].first, m_fresh[block - recordBlocks].second);
        } else {
            return;
        }
    }
}

void QuadEdgeAssembly::Assemble(C2Subdivision& s, const FlatTriangulation& flat,
                                const std::array<SFVec3f, 3>& corners,
                                const std::vector<double>& heights,
                                const std::vector<std::uint32_t>& order) {
    Vertices(s, flat, corners, heights, order);
    Number(flat);
    InTwoHalves(flat.HalfEdgeCount(), m_helped,
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
    m_vertices.assign(3 + order.size(), nullptr);
    for (std::size_t v = 0; v < 3; ++v) {
        m_vertices[v] = m_store->MakePoint(v, corners[v]);
    }
    InTwoHalves(order.size(), m_helped, [&](std::size_t begin, std::size_t end) {
        for (std::size_t j = begin; j < end; ++j) {
            const Site& site = flat.Vertex(3 + j);
            SFVec3f* p = m_store->MakePoint(3 + j, SFVec3f(site.x, heights[j], site.y));
            m_vertices[3 + order[j]] = p;
        }
    });
    s.m_vertices = std::move(m_vertices);
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
    InTwoHalves(count, m_helped, [&](std::size_t begin, std::size_t end) {
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
    m_store->Truncate(FlatTriangulation::EdgesOf(count));
}

C2Edge* QuadEdgeAssembly::EdgeOf(std::uint32_t code, int k) const {
    return m_store->RunEdge(code >> 1, (2 * static_cast<int>(code & 1) + k) & 3);
}

void QuadEdgeAssembly::Fill(const FlatTriangulation& flat, std::size_t begin,
                            std::size_t end) const {
    // Half-edge h writes only its own directed edge and, on the enclosing triangle, that
    // edge's reverse: ranges of half-edges write disjoint fields.
    for (std::size_t h = begin; h < end; ++h) {
        const std::uint32_t code = m_codeOf[h];
        C2Edge* e = EdgeOf(code);
        EdgeLinks::SetOrg(e, m_store->RunPoint(flat.Origin(h)));
        LinkAroundTriangle(h);
        if (flat.Twin(h) == FlatTriangulation::kNone) {
            e->SetBoundaryEdge(true);
            EdgeLinks::SetOrg(EdgeOf(code, 2),
                              m_store->RunPoint(flat.Origin(FlatTriangulation::Next(h))));
            LinkAroundOuterFace(flat.Origin(h));
        }
    }
}

void QuadEdgeAssembly::LinkAroundTriangle(std::size_t h) const {
    // Around the origin, the edge after a to b is a to c, c the triangle's third corner: the
    // reverse of the previous half-edge. Around the left face, the next edge is the next
    // half-edge; the dual ring of InvRot(e) follows it, since Lnext is InvRot, Onext, Rot.
    const std::uint32_t code = m_codeOf[h];
    EdgeLinks::SetNext(EdgeOf(code), EdgeOf(m_codeOf[FlatTriangulation::Prev(h)], 2));
    EdgeLinks::SetNext(EdgeOf(code, 3), EdgeOf(m_codeOf[FlatTriangulation::Next(h)], 3));
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
