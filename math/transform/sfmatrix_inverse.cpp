// SFMatrix: inversion without pivoting, determinant, transposes, normalisation, decomposition.
#include "sfmatrix.h"

#include "frame/double_pair.h"
#include "transform/matrix_index.h"
#include "vector/vector_detail.h"
#include "zqexception.h"

#include <cmath>
#include <utility>

namespace {

using zq::detail::Index4;

using zq::detail::Pair;

/// Gauss-Jordan elimination without pivoting on a matrix m beside t, which starts as the
/// identity and ends as the inverse. Rows are held as pairs of columns (0, 1) and (2, 3); each
/// element sees the same operations in the same order as one column at a time.
class GaussJordan {
public:
    explicit GaussJordan(const double* m) {
        for (int r = 0; r < 4; ++r) {
            m_low[r] = zq::detail::Load(m + Index4(r, 0));
            m_high[r] = zq::detail::Load(m + Index4(r, 2));
            const double identity[4] = {r == 0 ? 1.0 : 0.0, r == 1 ? 1.0 : 0.0, r == 2 ? 1.0 : 0.0,
                                        r == 3 ? 1.0 : 0.0};
            m_tLow[r] = zq::detail::Load(identity);
            m_tHigh[r] = zq::detail::Load(identity + 2);
        }
    }

    /// Scales row i by the reciprocal of its pivot, then takes f = m[j][i] times it from every
    /// other row j where f is not exactly 0.0. After step i only the columns right of i of m
    /// are read again, so m's pairs left of them are no longer updated.
    template <int i>
    void Step() {
        const Pair r = zq::detail::Splat(1.0 / Element<i>(i));
        Pair f[4];
        for (int j = 0; j < 4; ++j) {
            f[j] = zq::detail::Splat(Element<i>(j));
        }
        if (i == 0) {
            m_low[i] = m_low[i] * r;
        }
        m_high[i] = m_high[i] * r;
        m_tLow[i] = m_tLow[i] * r;
        m_tHigh[i] = m_tHigh[i] * r;
        for (int j = 0; j < 4; ++j) {
            if (j == i) {
                continue;
            }
            // Rows whose f is exactly 0.0 keep their values: the differences are computed
            // either way and dropped there, which spares a branch per row.
            if (i == 0) {
                m_low[j] = zq::detail::IfZero(f[j], m_low[j], m_low[j] - f[j] * m_low[i]);
            }
            m_high[j] = zq::detail::IfZero(f[j], m_high[j], m_high[j] - f[j] * m_high[i]);
            m_tLow[j] = zq::detail::IfZero(f[j], m_tLow[j], m_tLow[j] - f[j] * m_tLow[i]);
            m_tHigh[j] = zq::detail::IfZero(f[j], m_tHigh[j], m_tHigh[j] - f[j] * m_tHigh[i]);
        }
    }

    /// Writes t.
    void StoreInverse(double* out) const {
        for (int r = 0; r < 4; ++r) {
            zq::detail::Store(out + Index4(r, 0), m_tLow[r]);
            zq::detail::Store(out + Index4(r, 2), m_tHigh[r]);
        }
    }

private:
    /// m[row][c].
    template <int c>
    double Element(int row) const {
        const Pair half = c < 2 ? m_low[row] : m_high[row];
        return c % 2 == 0 ? zq::detail::Low(half) : zq::detail::High(half);
    }

    Pair m_low[4];
    Pair m_high[4];
    Pair m_tLow[4];
    Pair m_tHigh[4];
};

/// Below this a row scale or a pivot makes the determinant 0.0.
constexpr double kDeterminantFloor = 1e-6;

/// The largest magnitude among the four elements of row r (0.0 when all are 0.0 or NaN).
double RowScale(const SFMatrix& m, int r) {
    double largest = 0.0;
    for (int c = 0; c < 4; ++c) {
        largest = std::fmax(largest, std::fabs(m[Index4(r, c)]));
    }
    return largest;
}

/// The column among i..3 of row i with the largest magnitude; ties keep the earlier column.
int PivotColumn(const SFMatrix& a, int i) {
    int p = i;
    for (int c = i + 1; c < 4; ++c) {
        if (std::fabs(a[Index4(i, c)]) > std::fabs(a[Index4(i, p)])) {
            p = c;
        }
    }
    return p;
}

} // namespace

SFMatrix& SFMatrix::Invert() {
    // Gauss-Jordan without pivoting: a zero pivot spreads infinities and NaN, silently.
    GaussJordan g(m_element);
    g.Step<0>();
    g.Step<1>();
    g.Step<2>();
    g.Step<3>();
    g.StoreInverse(m_element);
    return *this;
}

void SFMatrix::MakeAdjoint() {
    Invert();
}

void SFMatrix::Reorthogonalize() {}

double SFMatrix::GetDeterminant() const {
    SFMatrix a(*this);
    double scale[4];
    for (int r = 3; r >= 0; --r) {
        scale[r] = RowScale(a, r);
        if (scale[r] < kDeterminantFloor) {
            return 0.0;
        }
        if (scale[r] != 1.0) {
            for (int c = 0; c < 4; ++c) {
                a[Index4(r, c)] /= scale[r];
            }
        }
    }
    double det = 1.0;
    for (int i = 0; i < 3; ++i) {
        const int p = PivotColumn(a, i);
        if (std::fabs(a[Index4(i, p)]) < kDeterminantFloor) {
            return 0.0;
        }
        if (p != i) {
            det = -det;
            for (int r = i; r < 4; ++r) {
                std::swap(a[Index4(r, i)], a[Index4(r, p)]);
            }
        }
        det *= a[Index4(i, i)];
        // The pivot search has put a pivot of at least the floor at a[i][i].
        for (int k = i + 1; k < 4; ++k) {
            const double f = a[Index4(k, i)] / a[Index4(i, i)];
            if (f != 0.0) {
                for (int c = i + 1; c < 4; ++c) {
                    a[Index4(k, c)] -= f * a[Index4(i, c)];
                }
            }
        }
    }
    // Row 3's scale is deliberately not multiplied back: callers get the determinant divided
    // by it, as they always have.
    return det * a[Index4(3, 3)] * scale[0] * scale[1] * scale[2];
}

SFMatrix& SFMatrix::Transpose() {
    const SFMatrix copy(*this);
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            m_element[Index4(r, c)] = copy.m_element[Index4(c, r)];
        }
    }
    return *this;
}

void SFMatrix::TransposeRM() {
    std::swap(m_element[Index4(0, 1)], m_element[Index4(1, 0)]);
    std::swap(m_element[Index4(0, 2)], m_element[Index4(2, 0)]);
    std::swap(m_element[Index4(1, 2)], m_element[Index4(2, 1)]);
}

void SFMatrix::Normalize() {
    const double w = m_element[Index4(3, 3)];
    // A NaN counts as zero here, as the original's comparison took it.
    if (zq::detail::EqualOrUnordered(w, 0.0)) {
        throw CZqMathException(6, nullptr);
    }
    // m[3][3] itself is left as it was (it does not become 1.0): callers rely on it.
    for (int i = 0; i < 15; ++i) {
        m_element[i] /= w;
    }
}

double SFMatrix::ComputeScale() const {
    return (GetLeftVector().Length() + GetUpVector().Length() + GetViewVector().Length()) *
           0.3333333333333333;
}

void SFMatrix::RecoverVectors(SFVec3f& left, SFVec3f& up, SFVec3f& view, SFVec3f& position) const {
    left = GetLeftVector();
    up = GetUpVector();
    view = GetViewVector();
    position = GetPosition();
}

SFVec3f SFMatrix::GetEulerAngles() const {
    const double ey = std::atan2(-m_element[Index4(2, 0)], m_element[Index4(2, 2)]);
    const double ex = std::asin(m_element[Index4(2, 1)]);
    const double ez = m_element[Index4(0, 1)] == 0.0 && m_element[Index4(1, 1)] == 0.0
                          ? std::atan2(m_element[Index4(1, 0)], m_element[Index4(0, 0)])
                          : std::atan2(-m_element[Index4(0, 1)], m_element[Index4(1, 1)]);
    return SFVec3f(ex, ey, ez);
}

void SFMatrix::SetEulerAngles(SFVec3f const& e) {
    const double sx = std::sin(e.x);
    const double cx = std::cos(e.x);
    const double sy = std::sin(e.y);
    const double cy = std::cos(e.y);
    const double sz = std::sin(e.z);
    const double cz = std::cos(e.z);
    m_element[Index4(0, 0)] = cz * cy - sz * sy * sx;
    m_element[Index4(0, 1)] = -(sz * cx);
    m_element[Index4(0, 2)] = cy * sz * sx + cz * sy;
    m_element[Index4(1, 0)] = cz * sy * sx + cy * sz;
    m_element[Index4(1, 1)] = cz * cx;
    m_element[Index4(1, 2)] = sz * sy - cz * cy * sx;
    m_element[Index4(2, 0)] = -(sy * cx);
    m_element[Index4(2, 1)] = sx;
    m_element[Index4(2, 2)] = cy * cx;
}
