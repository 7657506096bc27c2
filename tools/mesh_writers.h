// mesh_writers.h: the files `zqmath tin` writes.
#ifndef ZQMATH_TOOLS_MESH_WRITERS_H
#define ZQMATH_TOOLS_MESH_WRITERS_H

#include "tin_mesh.h"

#include <cstdio>

namespace zq::tool {

/// Wavefront OBJ: "v x y z" lines, then "f" lines with 1-based indices.
void WriteObj(std::FILE* out, const Mesh& mesh);
/// PLY, binary little-endian: double x, y, z per vertex, then triangles as int indices.
void WritePly(std::FILE* out, const Mesh& mesh);
/// SVG plan view seen from above (x to the right, z down), triangles filled by their mean
/// height on a perceptual colour ramp, with a legend of the height range.
void WriteSvg(std::FILE* out, const Mesh& mesh);

} // namespace zq::tool

#endif
