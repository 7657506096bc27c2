// flat_build.h: the bulk build shared by C2Triangulation and C2Subdivision::Build. Not
// installed.
#ifndef ZQMATH_FLAT_BUILD_H
#define ZQMATH_FLAT_BUILD_H

#include "c2triangulation.h"
#include "delaunay/build_input.h"
#include "delaunay/flat_triangulation.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace zq::detail {

/// A triangulation of the kept samples, and the fate of the others.
struct FlatBuild {
    Corners corners;
    std::unique_ptr<FlatTriangulation> flat;
    /// The kept samples' positions in the caller's array, in the caller's order.
    std::vector<std::uint32_t> kept;
    /// Vertex 3 + j of flat is kept sample order[j].
    std::vector<std::uint32_t> order;
    std::size_t duplicates = 0;
    std::size_t rejected = 0;
};

/// Triangulates samples[0..count) in a spatial order with exact predicates. started, when
/// given, is told the number of samples to insert before the first goes in.
FlatBuild BuildFlat(const SFVec3f* samples, std::size_t count,
                    const C2TriangulationOptions& options,
                    const std::function<void(std::size_t)>& started);

} // namespace zq::detail

#endif
