// Robust predicates: the exact arithmetic behind the filters of the header, used when a rounded
// determinant is too close to zero to trust its sign: first the plain determinant again, kept
// when no operation rounded, then expansions.
#include "delaunay/robust_predicates.h"

#include <cstddef>

namespace zq::detail {

namespace {

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

/// Double arithmetic that remembers whether any operation rounded: when none did, the rounded
/// result is the exact one, zero included, and no expansion is needed. Integer grids and other
/// coordinates with few significant bits are decided this way.
class Unrounded {
public:
    double Sub(double a, double b) { return Checked(a, -b); }
    double Add(double a, double b) { return Checked(a, b); }
    double Mul(double a, double b) {
        double product, err;
        TwoProduct(a, b, product, err);
        m_exact = m_exact && err == 0.0;
        return product;
    }
    /// True while no operation has rounded.
    bool Exact() const { return m_exact; }

private:
    double Checked(double a, double b) {
        double sum, err;
        TwoSum(a, b, sum, err);
        m_exact = m_exact && err == 0.0;
        return sum;
    }
    bool m_exact = true;
};

/// The sign of v.
int SignOf(double v) {
    return (v > 0.0) - (v < 0.0);
}

/// An exact value as a sum of nonoverlapping doubles in increasing magnitude, without zeros,
/// at most N of them: each operation below states the capacity its result needs.
template <std::size_t N>
struct Expansion {
    double term[N];
    std::size_t size = 0;

    /// Adds b exactly: each term in turn absorbs the running sum, its rounding error stays;
    /// the result has at most one term more.
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
    /// Adds every term of e, times sign.
    template <std::size_t M>
    void Add(const Expansion<M>& e, double sign) {
        for (std::size_t i = 0; i < e.size; ++i) {
            Add(sign * e.term[i]);
        }
    }
    /// The sign of the value: that of its largest term.
    int Sign() const { return size == 0 ? 0 : (term[size - 1] > 0.0 ? 1 : -1); }
};

/// a - b exactly: two terms.
Expansion<2> Difference(double a, double b) {
    Expansion<2> out;
    out.Add(a);
    out.Add(-b);
    return out;
}

/// e * f exactly, as the sum of every pairwise exact product: 2 M N terms.
template <std::size_t M, std::size_t N>
Expansion<2 * M * N> Multiply(const Expansion<M>& e, const Expansion<N>& f) {
    Expansion<2 * M * N> out;
    for (std::size_t i = 0; i < e.size; ++i) {
        for (std::size_t j = 0; j < f.size; ++j) {
            double product, err;
            TwoProduct(e.term[i], f.term[j], product, err);
            out.Add(err);
            out.Add(product);
        }
    }
    return out;
}

/// p * q - r * s exactly, of two-term factors: 16 terms.
Expansion<16> CrossDifference(const Expansion<2>& p, const Expansion<2>& q, const Expansion<2>& r,
                              const Expansion<2>& s) {
    Expansion<16> out;
    out.Add(Multiply(p, q), 1.0);
    out.Add(Multiply(r, s), -1.0);
    return out;
}

/// The offsets of p from d, exactly.
struct Offset {
    Expansion<2> dx, dy;
    Offset(const Site& p, const Site& d) : dx(Difference(p.x, d.x)), dy(Difference(p.y, d.y)) {}
};

/// lift(p) * cross(q, r) exactly, the offsets taken from the fourth point: 512 terms.
Expansion<512> LiftedTerm(const Offset& p, const Offset& q, const Offset& r) {
    Expansion<16> lift;
    lift.Add(Multiply(p.dx, p.dx), 1.0);
    lift.Add(Multiply(p.dy, p.dy), 1.0);
    return Multiply(lift, CrossDifference(q.dx, r.dy, q.dy, r.dx));
}

} // namespace

int ExactOrientation(const Site& a, const Site& b, const Site& c) {
    Unrounded u;
    const double det =
        u.Sub(u.Mul(u.Sub(a.x, c.x), u.Sub(b.y, c.y)), u.Mul(u.Sub(a.y, c.y), u.Sub(b.x, c.x)));
    if (u.Exact()) {
        return SignOf(det);
    }
    return CrossDifference(Difference(a.x, c.x), Difference(b.y, c.y), Difference(a.y, c.y),
                           Difference(b.x, c.x))
        .Sign();
}

int ExactInCircle(const Site& a, const Site& b, const Site& c, const Site& d) {
    Unrounded u;
    const double adx = u.Sub(a.x, d.x), ady = u.Sub(a.y, d.y);
    const double bdx = u.Sub(b.x, d.x), bdy = u.Sub(b.y, d.y);
    const double cdx = u.Sub(c.x, d.x), cdy = u.Sub(c.y, d.y);
    const double la = u.Add(u.Mul(adx, adx), u.Mul(ady, ady));
    const double lb = u.Add(u.Mul(bdx, bdx), u.Mul(bdy, bdy));
    const double lc = u.Add(u.Mul(cdx, cdx), u.Mul(cdy, cdy));
    const double bc = u.Sub(u.Mul(bdx, cdy), u.Mul(bdy, cdx));
    const double ca = u.Sub(u.Mul(cdx, ady), u.Mul(cdy, adx));
    const double ab = u.Sub(u.Mul(adx, bdy), u.Mul(ady, bdx));
    const double rounded = u.Add(u.Add(u.Mul(la, bc), u.Mul(lb, ca)), u.Mul(lc, ab));
    if (u.Exact()) {
        return SignOf(rounded);
    }
    const Offset pa(a, d), pb(b, d), pc(c, d);
    Expansion<1536> det;
    det.Add(LiftedTerm(pa, pb, pc), 1.0);
    det.Add(LiftedTerm(pb, pc, pa), 1.0);
    det.Add(LiftedTerm(pc, pa, pb), 1.0);
    return det.Sign();
}

} // namespace zq::detail
