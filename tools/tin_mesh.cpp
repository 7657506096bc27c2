// tin_mesh.cpp: vertices renumbered without the corners, triangles turned to face up.
#include "tin_mesh.h"

#include <algorithm>

namespace zq::tool {
namespace {

/// The triangle turned so that its smallest index comes first; the winding stays.
Triangle Canonical(Triangle t) {
    std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
    return t;
}

} // namespace

Mesh MakeMesh(const C2Subdivision& subdivision) {
    constexpr std::size_t kCorners = 3;
    Mesh mesh;
    mesh.vertices.reserve(subdivision.GetVertexCount() - kCorners);
    for (std::size_t i = kCorners; i < subdivision.GetVertexCount(); ++i) {
        mesh.vertices.push_back(*subdivision.GetVertex(i));
    }
    const auto triangles = subdivision.GetTriangles(false);
    mesh.triangles.reserve(triangles.size());
    for (const auto& t : triangles) {
        // Counter-clockwise in the (x, z) plane is clockwise seen from +y, since x cross z is -y:
        // the second and third corners change places.
        mesh.triangles.push_back(Canonical({static_cast<std::uint32_t>(t[0] - kCorners),
                                            static_cast<std::uint32_t>(t[2] - kCorners),
                                            static_cast<std::uint32_t>(t[1] - kCorners)}));
    }
    // Sorted, so that the files depend on the triangles and not on the order they were built in.
    std::sort(mesh.triangles.begin(), mesh.triangles.end());
    return mesh;
}

} // namespace zq::tool
