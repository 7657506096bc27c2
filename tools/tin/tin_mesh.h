// tin_mesh.h: a flat triangulation as the writers see it.
#ifndef ZQMATH_TOOLS_TIN_TIN_MESH_H
#define ZQMATH_TOOLS_TIN_TIN_MESH_H

#include "io/mesh.h"

#include <c2triangulation.h>
#include <sfvec3f.h>

#include <vector>

namespace zq::tool {

/// The triangulation of samples that hold their height in y (the plan is x-z), read in place:
/// the kept samples in the input's order, given back in the input's axes (y and z exchanged
/// again when z is up), and the triangles that have no corner of the enclosing triangle,
/// counter-clockwise seen from above. Nothing is copied but two indices a vertex.
class TinMesh final : public MeshView {
public:
    TinMesh(const C2Triangulation& triangulation, const std::vector<SFVec3f>& samples, int up);
    TinMesh(const TinMesh&) = delete;
    TinMesh& operator=(const TinMesh&) = delete;

    std::size_t VertexCount() const override { return m_vertices; }
    SFVec3f Vertex(std::size_t i) const override;
    std::size_t TriangleCount() const override { return m_triangles; }
    void VisitTriangles(const TriangleVisitor& visit) const override;
    int Up() const override { return m_up; }

    /// The area of the triangles in plan.
    double PlanArea() const;

private:
    /// True when half-edges 3t, 3t + 1, 3t + 2 leave a corner of the enclosing triangle.
    bool HasCorner(std::size_t t) const;

    const C2Triangulation& m_triangulation;
    const SFVec3f* m_samples;
    const std::uint32_t* m_sampleOf;
    const std::uint32_t* m_origins;
    /// The kept samples' numbers, ascending: the vertices in the order they are written.
    std::vector<std::uint32_t> m_order;
    /// The written index of each vertex of the triangulation.
    std::vector<std::uint32_t> m_index;
    std::size_t m_vertices;
    std::size_t m_allTriangles;
    std::size_t m_triangles = 0;
    int m_up;
};

} // namespace zq::tool

#endif
