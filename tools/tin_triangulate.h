// tin_triangulate.h: the one place where `zqmath tin` builds its triangulation.
#ifndef ZQMATH_TOOLS_TIN_TRIANGULATE_H
#define ZQMATH_TOOLS_TIN_TRIANGULATE_H

#include <c2subdivision.h>
#include <c3rregion.h>
#include <sfvec3f.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace zq::tool {

/// Told how many samples have been handled so far, out of how many.
using ProgressHook = std::function<void(std::size_t done, std::size_t total)>;

/// A triangulation and what became of the samples.
struct Triangulation {
    std::unique_ptr<C2Subdivision> subdivision;
    /// Samples that became vertices.
    std::size_t inserted = 0;
    /// Samples left out within 1e-5 in x-z of an earlier one.
    std::size_t duplicates = 0;
    /// Samples left out with coordinates too large or too small to triangulate exactly.
    std::size_t rejected = 0;
};

/// The box around samples (at least one).
C3RRegion Bounds(const std::vector<SFVec3f>& samples);
/// The Delaunay triangulation of samples (at least one) in x-z, heights in y, inside a
/// counter-clockwise triangle well around their bounds, built in spatial order with exact
/// predicates. A null progress is not called.
Triangulation Triangulate(const std::vector<SFVec3f>& samples, const ProgressHook& progress);

} // namespace zq::tool

#endif
