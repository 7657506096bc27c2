// build_input.h: which samples a triangulation takes, and the triangle around them. Not
// installed.
#ifndef ZQMATH_BUILD_INPUT_H
#define ZQMATH_BUILD_INPUT_H

#include "c2triangulation.h"
#include "delaunay/robust_predicates.h"
#include "sfvec3f.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zq::detail {

/// An enclosing triangle, counter-clockwise in x-z.
using Corners = std::array<SFVec3f, 3>;

/// Closer than this in x-z, a sample duplicates an earlier one.
constexpr double kSameSiteDistance = 1e-5;

/// The site of a sample: its x and z.
inline Site SiteOf(const SFVec3f& p) {
    return {p.x, p.z};
}

/// True when x and z are zero or of a magnitude the exact predicates take.
bool Usable(const SFVec3f& p);
/// The caller's corners made counter-clockwise, or a triangle around the usable samples.
Corners EnclosingCorners(const SFVec3f* samples, std::size_t count,
                         const C2TriangulationOptions& options);
/// True when p lies strictly inside the corners.
bool StrictlyInside(const Corners& corners, const SFVec3f& p);
/// The positions of the samples to triangulate, in the caller's order: usable, and strictly
/// inside the corners when the caller gave them. Fewer than 2^32 samples.
std::vector<std::uint32_t> Candidates(const SFVec3f* samples, std::size_t count,
                                      const Corners& corners, bool givenCorners);

} // namespace zq::detail

#endif
