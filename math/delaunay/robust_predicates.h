// robust_predicates.h: orientation and in-circle signs that are always right. Not installed.
#ifndef ZQMATH_ROBUST_PREDICATES_H
#define ZQMATH_ROBUST_PREDICATES_H

#include "zqexport.h"

#include <cmath>

namespace zq::detail {

/// A point of the plane, read without conversion from (x, z) of a sample.
struct Site {
    double x;
    double y;
};

/// The unit round-off of double: every operation errs by at most this relative amount.
constexpr double kUnitRoundOff = 1.0 / 9007199254740992.0; // 2^-53
/// |error| of the rounded orientation <= this times |adx * bdy| + |ady * bdx|: the two
/// differences of each product err by one unit, the products and the final difference by one
/// each, 3 in all; one more covers the second-order terms and the rounding of the bound.
constexpr double kOrientationBound = 4.0 * kUnitRoundOff;
/// The same for the in-circle sum against its permanent: lifts err 4 units, cross terms 4,
/// their products 1, the two additions 2: 11 units; the rest is margin as above.
constexpr double kInCircleBound = 16.0 * kUnitRoundOff;

/// The orientation of a, b, c in exact arithmetic.
ZQMATH_API int ExactOrientation(const Site& a, const Site& b, const Site& c);
/// The in-circle sign of a, b, c, d in exact arithmetic.
ZQMATH_API int ExactInCircle(const Site& a, const Site& b, const Site& c, const Site& d);

/// The sign (1, 0, -1) of twice the signed area of a, b, c: 1 when counter-clockwise.
/// Exact for coordinates that are zero or of magnitude in [1e-30, 1e30].
inline int Orientation(const Site& a, const Site& b, const Site& c) {
    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (a.y - c.y) * (b.x - c.x);
    const double det = left - right;
    const double bound = kOrientationBound * (std::fabs(left) + std::fabs(right));
    if (det > bound) {
        return 1;
    }
    if (det < -bound) {
        return -1;
    }
    return ExactOrientation(a, b, c);
}

/// The sign of the in-circle determinant: 1 when d lies strictly inside the circle through the
/// counter-clockwise a, b, c, 0 on it, -1 outside. Exact under the same range as Orientation.
inline int InCircleSign(const Site& a, const Site& b, const Site& c, const Site& d) {
    const double adx = a.x - d.x, ady = a.y - d.y;
    const double bdx = b.x - d.x, bdy = b.y - d.y;
    const double cdx = c.x - d.x, cdy = c.y - d.y;
    const double bc1 = bdx * cdy, bc2 = bdy * cdx;
    const double ca1 = cdx * ady, ca2 = cdy * adx;
    const double ab1 = adx * bdy, ab2 = ady * bdx;
    const double la = adx * adx + ady * ady;
    const double lb = bdx * bdx + bdy * bdy;
    const double lc = cdx * cdx + cdy * cdy;
    const double det = la * (bc1 - bc2) + lb * (ca1 - ca2) + lc * (ab1 - ab2);
    const double permanent = la * (std::fabs(bc1) + std::fabs(bc2)) +
                             lb * (std::fabs(ca1) + std::fabs(ca2)) +
                             lc * (std::fabs(ab1) + std::fabs(ab2));
    const double bound = kInCircleBound * permanent;
    if (det > bound) {
        return 1;
    }
    if (det < -bound) {
        return -1;
    }
    return ExactInCircle(a, b, c, d);
}

} // namespace zq::detail

#endif
