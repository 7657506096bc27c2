// Robust predicates: a floating-point evaluation with a proven error bound, and exact expansion
// arithmetic when the rounded value is too close to zero to trust its sign.
#include "delaunay/robust_predicates.h"

#include <cmath>
#include <cstddef>

namespace zq::detail {

namespace {

/// The unit round-off of double: every operation errs by at most this relative amount.
constexpr double kUnit = 1.0 / 9007199254740992.0; // 2^-53
/// |error| of the rounded orientation <= this times |adx * bdy| + |ady * bdx|: the two
/// differences of each product err by kUnit, the products and the final difference by kUnit
/// each, 3 kUnit in all; one more covers the second-order terms and the rounded bound.
constexpr double kOrientationBound = 4.0 * kUnit;
/// The same for the in-circle sum: lifts err 4 kUnit, cross terms 4, their product 1, the two
/// additions 2: 11 kUnit; the rest is margin for higher orders and the rounded bound.
constexpr double kInCircleBound = 16.0 * kUnit;
/// 2^27 + 1: multiplying by it splits a double into two halves of 26 significant bits.
constexpr double kSplitter = 134217729.0;

/// a + b = sum + err exactly, sum the rounded sum (no precondition on the magnitudes).
inline void TwoSum(double a, double b, double& sum, double& err) {
    sum = a + b;
    const double bPart = sum - a;
    const double aPart = sum - bPart;
    err = (a - aPart) + (b - bPart);
}

/// a = hi + lo with both halves short enough that their products are exact.
inline void Split(double a, double& hi, double& lo) {
    const double c = kSplitter * a;
    hi = c - (c - a);
    lo = a - hi;
}

/// a * b = product + err exactly (no fused multiply-add is available or assumed).
inline void TwoProduct(double a, double b, double& product, double& err) {
    product = a * b;
    double aHi, aLo, bHi, bLo;
    Split(a, aHi, aLo);
    Split(b, bHi, bLo);
    err = ((aHi * bHi - product) + aHi * bLo + aLo * bHi) + aLo * bLo;
}

/// An exact value as a sum of nonoverlapping doubles in increasing magnitude, without zeros.
/// The capacity covers the in-circle determinant of differences that are themselves two terms.
struct Expansion {
    static constexpr std::size_t kCapacity = 1536;
    double term[kCapacity];
    std::size_t size = 0;

    /// Adds b exactly: each term in turn absorbs the running sum, its rounding error stays.
    void Add(double b) {
        std::size_t kept = 0;
        double carry = b;
        for (std::size_t i = 0; i < size; ++i) {
            double err;
            TwoSum(carry, term[i], carry, err);
            if (err != 0.0) {
                term[kept++] = err;
            }
        }
        if (carry != 0.0) {
            term[kept++] = carry;
        }
        size = kept;
    }
    /// Adds every term of e.
    void Add(const Expansion& e) {
        for (std::size_t i = 0; i < e.size; ++i) {
            Add(e.term[i]);
        }
    }
    /// The sign of the value: that of its largest term.
    int Sign() const { return size == 0 ? 0 : (term[size - 1] > 0.0 ? 1 : -1); }
};

/// a - b exactly.
void Difference(double a, double b, Expansion& out) {
    out.size = 0;
    out.Add(a);
    out.Add(-b);
}

/// out = e * f exactly, as the sum of every pairwise exact product.
void Multiply(const Expansion& e, const Expansion& f, Expansion& out) {
    out.size = 0;
    for (std::size_t i = 0; i < e.size; ++i) {
        for (std::size_t j = 0; j < f.size; ++j) {
            double product, err;
            TwoProduct(e.term[i], f.term[j], product, err);
            out.Add(err);
            out.Add(product);
        }
    }
}

/// out = p * q - r * s exactly.
void CrossDifference(const Expansion& p, const Expansion& q, const Expansion& r, const Expansion& s,
                     Expansion& out) {
    Expansion negative;
    Multiply(r, s, negative);
    Multiply(p, q, out);
    for (std::size_t i = 0; i < negative.size; ++i) {
        out.Add(-negative.term[i]);
    }
}

int ExactOrientation(const Site& a, const Site& b, const Site& c) {
    Expansion adx, ady, bdx, bdy, det;
    Difference(a.x, c.x, adx);
    Difference(a.y, c.y, ady);
    Difference(b.x, c.x, bdx);
    Difference(b.y, c.y, bdy);
    CrossDifference(adx, bdy, ady, bdx, det);
    return det.Sign();
}

/// The offsets of p from d, exactly.
struct Offset {
    Expansion dx, dy;
    Offset(const Site& p, const Site& d) {
        Difference(p.x, d.x, dx);
        Difference(p.y, d.y, dy);
    }
};

/// lift(p) * cross(q, r) exactly, the offsets taken from the fourth point.
void LiftedTerm(const Offset& p, const Offset& q, const Offset& r, Expansion& out) {
    Expansion lift, square, cross;
    Multiply(p.dx, p.dx, lift);
    Multiply(p.dy, p.dy, square);
    lift.Add(square);
    CrossDifference(q.dx, r.dy, q.dy, r.dx, cross);
    Multiply(lift, cross, out);
}

int ExactInCircle(const Site& a, const Site& b, const Site& c, const Site& d) {
    const Offset pa(a, d), pb(b, d), pc(c, d);
    Expansion det, term;
    LiftedTerm(pa, pb, pc, det);
    LiftedTerm(pb, pc, pa, term);
    det.Add(term);
    LiftedTerm(pc, pa, pb, term);
    det.Add(term);
    return det.Sign();
}

} // namespace

int Orientation(const Site& a, const Site& b, const Site& c) {
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

int InCircleSign(const Site& a, const Site& b, const Site& c, const Site& d) {
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
