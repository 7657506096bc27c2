// triangle_scan.h: how far a heightmap's pixels lie from the plane of a triangle over them.
#ifndef ZQMATH_TOOLS_MESH_TRIANGLE_SCAN_H
#define ZQMATH_TOOLS_MESH_TRIANGLE_SCAN_H

#include "../io/raster.h"

#include <array>
#include <cstdint>

namespace zq::tool {

/// The pixel of a triangle farthest from its plane, and how far (in the raster's units).
struct Candidate {
    std::uint32_t pixel = 0;
    double error = 0.0;
};

/// Scans the pixel centres in the closed triangle whose corners are the centres of the pixels
/// corners (indices y * width + x), the plane through the corners' values, and returns the
/// first pixel (in raster order) of those farthest from it. Exact: the distances are compared
/// as integers and divided once at the end. A triangle without area gives error 0.
Candidate ScanTriangle(const Raster& raster, const std::array<std::uint32_t, 3>& corners);

} // namespace zq::tool

#endif
