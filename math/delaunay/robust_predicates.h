// robust_predicates.h: orientation and in-circle signs that are always right. Not installed.
#ifndef ZQMATH_ROBUST_PREDICATES_H
#define ZQMATH_ROBUST_PREDICATES_H

namespace zq::detail {

/// A point of the plane, read without conversion from (x, z) of a sample.
struct Site {
    double x;
    double y;
};

/// The sign (1, 0, -1) of twice the signed area of a, b, c: 1 when counter-clockwise.
/// Exact for coordinates that are zero or of magnitude in [1e-30, 1e30].
int Orientation(const Site& a, const Site& b, const Site& c);

/// The sign of the in-circle determinant: 1 when d lies strictly inside the circle through the
/// counter-clockwise a, b, c, 0 on it, -1 outside. Exact under the same range as Orientation.
int InCircleSign(const Site& a, const Site& b, const Site& c, const Site& d);

} // namespace zq::detail

#endif
