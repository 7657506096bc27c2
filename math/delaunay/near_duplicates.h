// near_duplicates.h: which samples of a build are dropped as too close to others. Not installed.
#ifndef ZQMATH_NEAR_DUPLICATES_H
#define ZQMATH_NEAR_DUPLICATES_H

#include "sfvec3f.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zq::detail {

/// The candidates (positions in samples, in the caller's order) left when each of close
/// (indices into candidates) is dropped if a corner or an earlier kept candidate lies closer
/// than distance in x-z. Candidates not in close are kept without a look.
std::vector<std::uint32_t> WithoutNearDuplicates(const std::array<SFVec3f, 3>& corners,
                                                 const SFVec3f* samples,
                                                 const std::vector<std::uint32_t>& candidates,
                                                 std::vector<std::uint32_t> close, double distance);

} // namespace zq::detail

#endif
