// tin_mesh.h: the triangulation as the writers see it.
#ifndef ZQMATH_TOOLS_TIN_MESH_H
#define ZQMATH_TOOLS_TIN_MESH_H

#include <c2subdivision.h>
#include <sfvec3f.h>

#include <array>
#include <cstdint>
#include <vector>

namespace zq::tool {

/// Three zero-based vertex indices, counter-clockwise seen from above.
using Triangle = std::array<std::uint32_t, 3>;

/// The samples that became vertices, in insertion order, and the triangles between them,
/// counter-clockwise seen from above (+y), so that their normals point up, each starting at its
/// smallest index and sorted. The corners of the enclosing triangle and the triangles that use
/// them are left out.
struct Mesh {
    std::vector<SFVec3f> vertices;
    std::vector<Triangle> triangles;
};

/// The mesh of a subdivision.
Mesh MakeMesh(const C2Subdivision& subdivision);

} // namespace zq::tool

#endif
