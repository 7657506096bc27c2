// tin_mesh.cpp: the triangulation's arrays read through the writers' interface.
#include "tin_mesh.h"

namespace zq::tool {
namespace {

/// The enclosing triangle's corners are vertices 0, 1 and 2.
constexpr std::uint32_t kCorners = 3;
/// Triangles handed to a visitor at once.
constexpr std::size_t kBlock = 4096;

} // namespace

TinMesh::TinMesh(const C2Triangulation& triangulation, const std::vector<SFVec3f>& samples, int up)
    : m_samples(samples.data()), m_sampleOf(triangulation.GetSamples()),
      m_origins(triangulation.GetOrigins()), m_vertices(triangulation.GetVertexCount() - kCorners),
      m_allTriangles(triangulation.GetTriangleCount()), m_up(up) {
    for (std::size_t t = 0; t < m_allTriangles; ++t) {
        m_triangles += HasCorner(t) ? 0 : 1;
    }
}

bool TinMesh::HasCorner(std::size_t t) const {
    const std::uint32_t* o = m_origins + 3 * t;
    return o[0] < kCorners || o[1] < kCorners || o[2] < kCorners;
}

SFVec3f TinMesh::Vertex(std::size_t i) const {
    const SFVec3f& s = m_samples[m_sampleOf[i + kCorners]];
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
        block[used] = {o[0] - kCorners, o[second] - kCorners, o[3 - second] - kCorners};
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
        const SFVec3f& a = m_samples[m_sampleOf[o[0]]];
        const SFVec3f& b = m_samples[m_sampleOf[o[1]]];
        const SFVec3f& c = m_samples[m_sampleOf[o[2]]];
        area += (b.x - a.x) * (c.z - a.z) - (b.z - a.z) * (c.x - a.x);
    }
    return 0.5 * area;
}

} // namespace zq::tool
