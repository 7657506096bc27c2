// mesh.h: a triangle mesh as the writers read it.
#ifndef ZQMATH_TOOLS_IO_MESH_H
#define ZQMATH_TOOLS_IO_MESH_H

#include "progress.h"

#include <sfvec3f.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace zq::tool {

/// Three zero-based vertex indices, counter-clockwise seen from above, so that the normal
/// points up.
using Triangle = std::array<std::uint32_t, 3>;
/// Called with a block of consecutive triangles.
using TriangleVisitor = std::function<void(const Triangle* triangles, std::size_t count)>;

/// The interface a writer reads a mesh through: vertices by index, triangles in order a block
/// at a time, so that a large mesh can be written from the arrays it was built in.
class MeshView {
public:
    virtual ~MeshView() = default;
    virtual std::size_t VertexCount() const = 0;
    virtual SFVec3f Vertex(std::size_t i) const = 0;
    virtual std::size_t TriangleCount() const = 0;
    /// Calls visit over every triangle in order, in blocks.
    virtual void VisitTriangles(const TriangleVisitor& visit) const = 0;
    /// The axis that points up: 1 for y, 2 for z.
    virtual int Up() const = 0;
};

/// A mesh held in memory, for meshes small enough to copy.
struct Mesh final : MeshView {
    std::vector<SFVec3f> vertices;
    std::vector<Triangle> triangles;
    /// The axis that points up: 1 for y, 2 for z.
    int up = 1;

    std::size_t VertexCount() const override { return vertices.size(); }
    SFVec3f Vertex(std::size_t i) const override { return vertices[i]; }
    std::size_t TriangleCount() const override { return triangles.size(); }
    void VisitTriangles(const TriangleVisitor& visit) const override {
        visit(triangles.data(), triangles.size());
    }
    int Up() const override { return up; }
};

/// Calls vertex(v) for every vertex in order, then triangle(t) for every triangle in order,
/// and tells progress how many of them all are done.
template <typename VertexFunction, typename TriangleFunction>
void WalkMesh(const MeshView& mesh, const ProgressHook& progress, VertexFunction vertex,
              TriangleFunction triangle) {
    constexpr std::size_t kProgressStep = 1 << 16;
    const std::size_t vertices = mesh.VertexCount();
    const std::size_t total = vertices + mesh.TriangleCount();
    for (std::size_t i = 0; i < vertices; ++i) {
        vertex(mesh.Vertex(i));
        if (progress && i % kProgressStep == 0) {
            progress(i, total);
        }
    }
    std::size_t done = vertices;
    mesh.VisitTriangles([&](const Triangle* triangles, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            triangle(triangles[i]);
        }
        done += count;
        if (progress) {
            progress(done, total);
        }
    });
    if (progress) {
        progress(total, total);
    }
}

} // namespace zq::tool

#endif
