// spatial_order.h: an insertion order that keeps consecutive sites close. Not installed.
#ifndef ZQMATH_SPATIAL_ORDER_H
#define ZQMATH_SPATIAL_ORDER_H

#include "delaunay/robust_predicates.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zq::detail {

/// The positions 0..sites.size()-1 in rounds of growing size, each round along a Hilbert curve
/// over the sites' bounding box. A site goes to a round by a hash of its position, so the
/// order is the same on every run and every platform. Fewer than 2^32 sites.
std::vector<std::uint32_t> InsertionOrder(const std::vector<Site>& sites);

} // namespace zq::detail

#endif
