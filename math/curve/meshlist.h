// meshlist.h: the point lists behind the mesh vector handles. Not installed.
#ifndef ZQMATH_MESHLIST_H
#define ZQMATH_MESHLIST_H

#include "sfvec3f.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace zq::detail {

/// The shared list behind a mesh vector handle.
using PointList = std::shared_ptr<std::vector<SFVec3f>>;

/// A new list of n default points. SFVec3f's default constructor leaves a point unset and
/// copying unset doubles is undefined, so the default point is made (0, 0, 0).
inline PointList NewPointList(std::size_t n) {
    return std::make_shared<std::vector<SFVec3f>>(n, SFVec3f::kZero);
}

/// A point count given as a long, as the 32-bit value callers have always passed.
inline std::int32_t Count32(long n) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(n));
}

} // namespace zq::detail

#endif
