// heightmap_mesher.h: greedy insertion of a heightmap's worst pixels into a Delaunay mesh.
#ifndef ZQMATH_TOOLS_MESH_HEIGHTMAP_MESHER_H
#define ZQMATH_TOOLS_MESH_HEIGHTMAP_MESHER_H

#include "../io/mesh.h"
#include "../io/raster.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zq::tool {

/// When meshing stops: every pixel within error (a fraction of the raster's full range) of
/// the mesh, or the next insertion would pass a budget.
struct MeshLimits {
    double error = 0.01;
    std::size_t triangles = std::numeric_limits<std::size_t>::max();
    std::size_t vertices = std::numeric_limits<std::size_t>::max();
};

/// A heightmap's mesh in pixel units: vertex (x, v, y) for the pixel of column x, row y and
/// value v, triangles counter-clockwise seen from +y.
struct HeightmapMesh {
    Mesh mesh;
    /// The mesh's boundary, the raster's outline, as vertices.
    std::vector<std::uint32_t> outline;
    /// The largest distance of a pixel from the mesh, a fraction of the full range.
    double largestError = 0.0;
};

/// Meshes the raster by greedy insertion: starting from its four corner pixels, inserts the
/// pixel farthest from the mesh (the plane of its triangle at its centre) until limits stop
/// it. A raster one pixel wide or high is meshed as if the pixels were there twice, side by
/// side, so that the mesh has area.
HeightmapMesh MeshHeightmap(const Raster& raster, const MeshLimits& limits);

} // namespace zq::tool

#endif
