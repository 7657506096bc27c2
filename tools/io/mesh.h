// mesh.h: a triangle mesh as the writers read it.
#ifndef ZQMATH_TOOLS_IO_MESH_H
#define ZQMATH_TOOLS_IO_MESH_H

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

} // namespace zq::tool

#endif
