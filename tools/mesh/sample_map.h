// sample_map.h: the built-in heightmap that `zqmath mesh` meshes when given none.
#ifndef ZQMATH_TOOLS_MESH_SAMPLE_MAP_H
#define ZQMATH_TOOLS_MESH_SAMPLE_MAP_H

#include "../io/raster.h"

namespace zq::tool {

/// A 16-bit map of 256 x 256 pixels: hills, a crater and a ridge over gentle noise. Made
/// with additions, multiplications and divisions only, so that it is the same everywhere.
Raster SampleMap();

} // namespace zq::tool

#endif
