// stl_writer.h: binary STL, with an optional solid base for printing.
#ifndef ZQMATH_TOOLS_IO_STL_WRITER_H
#define ZQMATH_TOOLS_IO_STL_WRITER_H

#include "mesh.h"

#include <cstdint>
#include <cstdio>
#include <vector>

namespace zq::tool {

/// A solid under a mesh whose outline is convex seen from above: walls from the outline down
/// to the height bottom, and a floor there.
struct SolidBase {
    /// The mesh's boundary vertices in order around it, either way round.
    std::vector<std::uint32_t> outline;
    float bottom = 0.0f;
};

/// Binary STL (little-endian): an 80-byte header, the facet count, then each facet's unit
/// normal and corners as floats. The mesh's triangles keep their winding (normals up); the
/// base's facets face outwards and down.
void WriteStl(std::FILE* out, const Mesh& mesh, const SolidBase* base = nullptr);

} // namespace zq::tool

#endif
