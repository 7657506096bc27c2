// sample_terrain.h: the built-in landscape that `zqmath tin` triangulates when given no input.
#ifndef ZQMATH_TOOLS_TIN_SAMPLE_TERRAIN_H
#define ZQMATH_TOOLS_TIN_SAMPLE_TERRAIN_H

#include <sfvec3f.h>

#include <vector>

namespace zq::tool {

/// 3600 samples of a smooth landscape of hills and a basin, 300 by 300 units in x-y (heights in z),
/// on a jittered grid in raster order. The same positions on every platform.
std::vector<SFVec3f> SampleTerrain();

} // namespace zq::tool

#endif
