// tin_mesh.cpp: the triangulation's arrays read through the writers' interface.
#include "tin_mesh.h"

#include "large_pages.h"

namespace zq::tool {
namespace {

/// The enclosing triangle's corners are vertices 0, 1 and 2.
constexpr std::uint32_t kCorners = 3;
/// No vertex or sample.
constexpr std::uint32_t kNone = C2Triangulation::kNone;
/// Triangles handed to a visitor at once.
constexpr std::size_t kBlock = 4096;

} // namespace

TinMesh::TinMesh(const C2Triangulation& triangulation, const std::vector<SFVec3f>& samples, int up)
    : m_triangulation(triangulation), m_samples(samples.data()),
      m_sampleOf(triangulation.GetSamples()), m_origins(triangulation.GetOrigins()),
      m_vertices(triangulation.GetVertexCount() - kCorners),
      m_allTriangles(triangulation.GetTriangleCount()), m_up(up) {
    // Vertex v is marked at its sample, then the marks are read in the samples' order: that
    // numbers the vertices, and the same array, compacted, lists the samples written.
    ReserveLarge(m_order, samples.size());
    ReserveLarge(m_index, m_vertices + kCorners);
    m_order.assign(samples.size(), kNone);
    m_index.assign(m_vertices + kCorners, kNone);
    for (std::uint32_t v = kCorners; v < m_vertices + kCorners; ++v) {
        m_order[m_sampleOf[v]] = v;
    }
    std::uint32_t next = 0;
    for (std::uint32_t s = 0; s < m_order.size(); ++s) {
        if (m_order[s] != kNone) {
            m_index[m_order[s]] = next;
            m_order[next++] = s;
        }
    }
    m_order.resize(next);
    for (std::size_t t = 0; t < m_allTriangles; ++t) {
        m_triangles += HasCorner(t) ? 0 : 1;
    }
}

bool TinMesh::HasCorner(std::size_t t) const {
    const std::uint32_t* o = m_origins + 3 * t;
    return o[0] < kCorners || o[1] < kCorners || o[2] < kCorners;
}

SFVec3f TinMesh::Vertex(std::size_t i) const {
    const SFVec3f& s = m_samples[m_order[i]];
    return m_up == 2 ? SFVec3f(s.x, s.z, s.y) : s;
}

void TinMesh::VisitTriangles(const TriangleVisitor& visit) const {
    // Counter-clockwise in the plan (x, z) is counter-clockwise seen from +z when the plan is the
    // input's x-y, but clockwise seen from +y when it is the input's x-z (x cross z is -y): the
    // second and third corners then change places.
    const int second = m_up == 2 ? 1 : 2;
    Triangle block[kBlock];
    std::size_t used = 0;
    for (std::size_t t = 0; t < m_allTriangles; ++t) {
        if (HasCorner(t)) {
            continue;
        }
        const std::uint32_t* o = m_origins + 3 * t;
        block[used] = {m_index[o[0]], m_index[o[second]], m_index[o[3 - second]]};
        if (++used == kBlock) {
            visit(block, used);
            used = 0;
        }
    }
    if (used > 0) {
        visit(block, used);
    }
}

double TinMesh::PlanArea() const {
    double area = 0.0;
    for (std::size_t t = 0; t < m_allTriangles; ++t) {
        if (HasCorner(t)) {
            continue;
        }
        const std::uint32_t* o = m_origins + 3 * t;
        // The triangulation's own sites lie in its vertex order, near one another in memory.
        const SFVec2f a = m_triangulation.GetSite(o[0]);
        const SFVec2f b = m_triangulation.GetSite(o[1]);
        const SFVec2f c = m_triangulation.GetSite(o[2]);
        area += (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    }
    return 0.5 * area;
}

} // namespace zq::tool
