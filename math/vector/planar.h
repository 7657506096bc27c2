// planar.h: 2D orientation and distance, inline for the triangulation's inner loops.
#ifndef ZQMATH_PLANAR_H
#define ZQMATH_PLANAR_H

#include "sfvec2f.h"

#include <cmath>

namespace zq::detail {

/// Twice the signed area of a, b, c, positive counter-clockwise. The triangulation relies on
/// the sign of this very expression, rounding included.
inline double TriArea(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// 1 when a, b, c turn strictly counter-clockwise, else 0.
inline int Ccw(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c) {
    return TriArea(a, b, c) > 0.0 ? 1 : 0;
}

/// The distance from a to b.
inline double Distance(const SFVec2f& a, const SFVec2f& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace zq::detail

#endif
