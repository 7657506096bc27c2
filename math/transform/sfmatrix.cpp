// SFMatrix: construction, element access, products, transform builders and point transforms.
#include "sfmatrix.h"

#include "c3matrix.h"
#include "cquat.h"
#include "frame/double_pair.h"
#include "transform/general_inverse.h"
#include "transform/matrix_index.h"
#include "transform/rotation_detail.h"
#include "vector/vector_detail.h"
#include "zqexception.h"

#include <cmath>
#include <cstdint>

namespace {

using zq::detail::Index4;

using zq::detail::Pair;

/// The rows of a matrix as pairs of columns: (0, 1) in low, (2, 3) in high.
struct Rows {
    explicit Rows(const double* m) {
        for (int r = 0; r < 4; ++r) {
            low[r] = zq::detail::Load(m + Index4(r, 0));
            high[r] = zq::detail::Load(m + Index4(r, 2));
        }
    }
    Pair low[4];
    Pair high[4];
};

/// (x, y, z, w)·m into the columns (0, 1) and (2, 3): w exactly 1.0 adds row 3, exactly 0.0
/// leaves it out. Each column's sum keeps its order, x first.
inline void Homogeneous(const Rows& m, double x, double y, double z, double w, Pair& low,
                        Pair& high) {
    const Pair px = zq::detail::Splat(x);
    const Pair py = zq::detail::Splat(y);
    const Pair pz = zq::detail::Splat(z);
    low = px * m.low[0] + py * m.low[1] + pz * m.low[2];
    high = px * m.high[0] + py * m.high[1] + pz * m.high[2];
    if (w == 1.0) {
        low = low + m.low[3];
        high = high + m.high[3];
    } else if (w != 0.0) {
        const Pair pw = zq::detail::Splat(w);
        low = low + pw * m.low[3];
        high = high + pw * m.high[3];
    }
}

/// (p, 1)·m, divided by w unless w is exactly 1.0 or 0.0, into out.
inline void TransformedPoint(const Rows& m, const SFVec3f& p, SFVec3f& out) {
    Pair low;
    Pair high;
    Homogeneous(m, p.x, p.y, p.z, 1.0, low, high);
    const double w = zq::detail::High(high);
    // Exact tests: only a w of exactly 1.0 or 0.0 skips the division.
    if (w != 1.0 && w != 0.0) {
        low = low / zq::detail::Splat(w);
        high = high / zq::detail::Splat(w);
    }
    out.x = zq::detail::Low(low);
    out.y = zq::detail::High(low);
    out.z = zq::detail::Low(high);
}

/// Each element of a matrix in both lanes of a pair.
struct Splats {
    explicit Splats(const double* m) {
        for (int i = 0; i < 16; ++i) {
            e[i] = zq::detail::Splat(m[i]);
        }
    }
    Pair e[16];
};

/// The three doubles of each of two points as the pairs (x0, y0), (z0, x1), (y1, z1).
static_assert(sizeof(SFVec3f) == 3 * sizeof(double), "points are three packed doubles");

/// TransformedPoint of src[0] and src[1] into dst[0] and dst[1], the two points side by side:
/// each lane makes the same sums in the same order as one point alone. Both points are read
/// before either is written, so src may be dst.
inline void TransformedTwo(const Rows& m, const Splats& e, const SFVec3f* src, SFVec3f* dst) {
    const double* in = &src[0].x;
    const Pair a = zq::detail::Load(in);
    const Pair b = zq::detail::Load(in + 2);
    const Pair c = zq::detail::Load(in + 4);
    const Pair x = zq::detail::LowHigh(a, b);
    const Pair y = zq::detail::HighLow(a, c);
    const Pair z = zq::detail::LowHigh(b, c);
    Pair out[4];
    for (int k = 0; k < 4; ++k) {
        out[k] = x * e.e[Index4(0, k)] + y * e.e[Index4(1, k)] + z * e.e[Index4(2, k)] +
                 e.e[Index4(3, k)];
    }
    if (!zq::detail::EachZeroOrOne(out[3])) {
        TransformedPoint(m, src[0], dst[0]);
        TransformedPoint(m, src[1], dst[1]);
        return;
    }
    double* o = &dst[0].x;
    zq::detail::Store(o, zq::detail::Lows(out[0], out[1]));
    zq::detail::Store(o + 2, zq::detail::LowHigh(out[2], out[0]));
    zq::detail::Store(o + 4, zq::detail::Highs(out[1], out[2]));
}

/// out = b × a, each element set to 0.0 and then summed in place, j = 0..3 in order: with out
/// being a or b, later sums read the elements that earlier ones wrote.
void SumProductInPlace(double* out, const double* a, const double* b) {
    for (int i = 0; i < 4; ++i) {
        for (int k = 0; k < 4; ++k) {
            double& sum = out[Index4(i, k)];
            sum = 0.0;
            for (int j = 0; j < 4; ++j) {
                sum += b[Index4(i, j)] * a[Index4(j, k)];
            }
        }
    }
}

/// out = b × a for an out that is neither a nor b: the sums of SumProductInPlace, from 0.0
/// and j = 0..3 in order, two columns at a time.
inline void SumProduct(double* out, const double* a, const double* b) {
    const Rows rows(a);
    for (int i = 0; i < 4; ++i) {
        Pair low = zq::detail::Splat(0.0);
        Pair high = low;
        for (int j = 0; j < 4; ++j) {
            const Pair f = zq::detail::Splat(b[Index4(i, j)]);
            low = low + f * rows.low[j];
            high = high + f * rows.high[j];
        }
        zq::detail::Store(out + Index4(i, 0), low);
        zq::detail::Store(out + Index4(i, 2), high);
    }
}

/// The inverse of m by the pivoted general inversion; throws record 6 when m is singular.
SFMatrix PivotedInverse(const SFMatrix& m) {
    SFMatrix inverse(m);
    if (!zq::detail::InvertGeneral(&inverse[0], &inverse[0])) {
        throw CZqMathException(6, nullptr);
    }
    return inverse;
}

} // namespace

SFMatrix::SFMatrix(SFMatrix const& other) {
    for (int i = 0; i < 16; ++i) {
        m_element[i] = other.m_element[i];
    }
}

SFMatrix::SFMatrix(double e00, double e01, double e02, double e03, double e10, double e11,
                   double e12, double e13, double e20, double e21, double e22, double e23,
                   double e30, double e31, double e32, double e33)
    : m_element{e00, e01, e02, e03, e10, e11, e12, e13, e20, e21, e22, e23, e30, e31, e32, e33} {}

SFMatrix::SFMatrix(float* f, bool rowMajor) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            m_element[Index4(r, c)] = rowMajor ? f[Index4(r, c)] : f[Index4(c, r)];
        }
    }
}

SFMatrix::SFMatrix(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c, SFVec3f const& d) {
    InitializeWith(a, b, c, d);
}

SFMatrix::SFMatrix(SFVec3f const& axis, double angle) {
    // The recipe rounds exactly L, r, nx, ny, s, tx and ty to single precision and computes
    // everything else in double from those values: callers depend on the exact elements.
    const float length =
        static_cast<float>(std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z));
    if (std::fabs(static_cast<double>(length)) < 0.0001) {
        Identity();
        return;
    }
    const float r = 1.0f / length;
    const double nx = static_cast<float>(axis.x * r);
    const double ny = static_cast<float>(axis.y * r);
    const double nz = axis.z * r;
    // The angle is scaled by the axis length: a longer axis turns further.
    const double theta = length * angle;
    const double s = static_cast<float>(std::sin(theta));
    const double c = std::cos(theta);
    const double t = 1.0 - c;
    const double tx = static_cast<float>(t * nx);
    const double ty = static_cast<float>(t * ny);
    const double tz = t * nz;
    // The transpose of the rotation rule for a unit axis: the opposite sense, kept on purpose.
    *this = SFMatrix(tx * nx + c, tx * ny - s * nz, tx * nz + s * ny, 0.0, ty * nx + s * nz,
                     ty * ny + c, ty * nz - s * nx, 0.0, tz * nx - s * ny, tz * ny + s * nx,
                     tz * nz + c, 0.0, 0.0, 0.0, 0.0, 1.0);
}

SFMatrix::SFMatrix(CQuat* q) {
    const double s = 2.0 / (q->x * q->x + q->y * q->y + q->z * q->z + q->w * q->w);
    double e[9];
    zq::detail::QuaternionRotation(*q, s, e);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            m_element[Index4(r, c)] = e[3 * r + c];
        }
    }
}

SFMatrix::SFMatrix(C3Matrix const& m3) {
    Identity();
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            m_element[Index4(r, c)] = m3[3 * r + c];
        }
    }
}

SFMatrix& SFMatrix::operator=(SFMatrix const& other) {
    if (this != &other) {
        for (int i = 0; i < 16; ++i) {
            m_element[i] = other.m_element[i];
        }
    }
    return *this;
}

void SFMatrix::InitializeWith(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c,
                              SFVec3f const& d) {
    *this =
        SFMatrix(a.x, a.y, a.z, 0.0, b.x, b.y, b.z, 0.0, c.x, c.y, c.z, 0.0, d.x, d.y, d.z, 1.0);
}

double& SFMatrix::operator[](int i) {
    return m_element[i];
}

double const& SFMatrix::operator[](int i) const {
    return m_element[i];
}

double SFMatrix::GetElement(long i) const {
    return m_element[i];
}

double& SFMatrix::At(short r, short c) {
    return m_element[Index4(r, c)];
}

double SFMatrix::ValueAt(short r, short c) const {
    return m_element[Index4(r, c)];
}

SFVec3f SFMatrix::GetLeftVector() const {
    return SFVec3f(m_element[0], m_element[1], m_element[2]);
}

SFVec3f SFMatrix::GetUpVector() const {
    return SFVec3f(m_element[4], m_element[5], m_element[6]);
}

SFVec3f SFMatrix::GetViewVector() const {
    return SFVec3f(m_element[8], m_element[9], m_element[10]);
}

SFVec3f SFMatrix::GetPosition() const {
    return SFVec3f(m_element[12], m_element[13], m_element[14]);
}

namespace {

/// Overwrites columns 0..2 of row r with v.
void SetRow(double* m, int r, const SFVec3f& v) {
    m[Index4(r, 0)] = v.x;
    m[Index4(r, 1)] = v.y;
    m[Index4(r, 2)] = v.z;
}

} // namespace

void SFMatrix::SetLeftVector(SFVec3f const& v) {
    SetRow(m_element, 0, v);
}

void SFMatrix::SetUpVector(SFVec3f const& v) {
    SetRow(m_element, 1, v);
}

void SFMatrix::SetViewVector(SFVec3f const& v) {
    SetRow(m_element, 2, v);
}

void SFMatrix::SetPosition(SFVec3f const& v) {
    SetRow(m_element, 3, v);
}

SFMatrix& SFMatrix::Identity() {
    *this =
        SFMatrix(1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0);
    return *this;
}

void SFMatrix::Zero() {
    for (double& e : m_element) {
        e = 0.0;
    }
}

void SFMatrix::Multiply(SFMatrix const& A, SFMatrix const& B) {
    // Summed in place, so A.Multiply(A, B) reads elements it has already overwritten; callers
    // use MultiplyIn for that.
    if (this == &A || this == &B) {
        SumProductInPlace(m_element, A.m_element, B.m_element);
        return;
    }
    SumProduct(m_element, A.m_element, B.m_element);
}

SFMatrix* SFMatrix::Multiply(SFMatrix const& B) const {
    SFMatrix* product = new SFMatrix;
    product->Multiply(*this, B);
    return product;
}

void SFMatrix::MultiplyIn(SFMatrix const& B) {
    *this = *this * B;
}

SFMatrix SFMatrix::operator*(SFMatrix const& B) const {
    SFMatrix product;
    product.Multiply(*this, B);
    return product;
}

void SFMatrix::ConcatWith(SFMatrix const& B) {
    const SFMatrix A(*this);
    PostConcatMatrix(A, B);
}

void SFMatrix::PostConcatMatrix(SFMatrix const& A, SFMatrix const& B) {
    const SFMatrix b(B);
    for (int i = 0; i < 4; ++i) {
        // Rows of the left operand are rounded to single precision before the product:
        // concatenated transforms must match the original bit for bit.
        float a[4];
        for (int j = 0; j < 4; ++j) {
            a[j] = static_cast<float>(A.m_element[Index4(i, j)]);
        }
        for (int k = 0; k < 4; ++k) {
            m_element[Index4(i, k)] = static_cast<double>(a[0]) * b.m_element[Index4(0, k)] +
                                      static_cast<double>(a[1]) * b.m_element[Index4(1, k)] +
                                      static_cast<double>(a[2]) * b.m_element[Index4(2, k)] +
                                      static_cast<double>(a[3]) * b.m_element[Index4(3, k)];
        }
    }
}

SFMatrix SFMatrix::operator+(SFMatrix const& B) const {
    SFMatrix sum;
    for (int i = 0; i < 16; ++i) {
        sum.m_element[i] = m_element[i] + B.m_element[i];
    }
    return sum;
}

SFMatrix SFMatrix::operator-(SFMatrix const& B) const {
    SFMatrix difference;
    for (int i = 0; i < 16; ++i) {
        difference.m_element[i] = m_element[i] - B.m_element[i];
    }
    return difference;
}

int SFMatrix::operator==(SFMatrix const& B) const {
    // Only a strictly ordered pair differs: a NaN on either side counts as equal.
    for (int i = 0; i < 16; ++i) {
        if (!zq::detail::EqualOrUnordered(m_element[i], B.m_element[i])) {
            return 0;
        }
    }
    return 1;
}

int SFMatrix::operator!=(SFMatrix const& B) const {
    return *this == B ? 0 : 1;
}

long SFMatrix::Hash() const {
    double sum = 0.0;
    for (const double e : m_element) {
        sum += e;
    }
    // The 32-bit result of the original's conversion, on every platform.
    return static_cast<std::int32_t>(zq::detail::TruncatedLow32(sum));
}

void SFMatrix::Translate(SFVec3f const& t) {
    Translate(t.x, t.y, t.z);
}

void SFMatrix::Translate(double x, double y, double z) {
    Identity();
    SetPosition(SFVec3f(x, y, z));
}

void SFMatrix::TranslateBy(SFVec3f const& t) {
    SetPosition(t);
}

void SFMatrix::Scale(SFVec3f const& s) {
    Identity();
    m_element[Index4(0, 0)] = s.x;
    m_element[Index4(1, 1)] = s.y;
    m_element[Index4(2, 2)] = s.z;
}

void SFMatrix::ScaleBy(SFVec3f const& s, SFVec3f const& t) {
    // The original scaled values from outside the matrix for the x and y translation terms;
    // like the z term, these use m[3][0] and m[3][1].
    const double scale[3] = {s.x, s.y, s.z};
    const double offset[3] = {t.x, t.y, t.z};
    for (int j = 0; j < 3; ++j) {
        for (int r = 0; r < 3; ++r) {
            m_element[Index4(r, j)] *= scale[j];
        }
        m_element[Index4(3, j)] = m_element[Index4(3, j)] * scale[j] + offset[j];
    }
}

void SFMatrix::PostScale(double const& sx, double const& sy, double const& sz) {
    const double factor[3] = {sx, sy, sz};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) {
            m_element[Index4(r, c)] *= factor[r];
        }
    }
}

void SFMatrix::PostTranslate(double const& tx, double const& ty, double const& tz) {
    const double offset[3] = {tx, ty, tz};
    for (int c = 0; c < 4; ++c) {
        for (int r = 0; r < 3; ++r) {
            m_element[Index4(r, c)] += offset[r] * m_element[Index4(3, c)];
        }
    }
}

void SFMatrix::RotateX(double const& a) {
    *this = zq::detail::RuleRotation(SFVec3f(1.0, 0.0, 0.0), a);
}

void SFMatrix::RotateY(double const& a) {
    *this = zq::detail::RuleRotation(SFVec3f(0.0, 1.0, 0.0), a);
}

void SFMatrix::RotateZ(double const& a) {
    *this = zq::detail::RuleRotation(SFVec3f(0.0, 0.0, 1.0), a);
}

void SFMatrix::PostRotateX(double const& a) {
    ConcatWith(zq::detail::RuleRotation(SFVec3f(1.0, 0.0, 0.0), a));
}

void SFMatrix::PostRotateY(double const& a) {
    ConcatWith(zq::detail::RuleRotation(SFVec3f(0.0, 1.0, 0.0), a));
}

void SFMatrix::PostRotateZ(double const& a) {
    ConcatWith(zq::detail::RuleRotation(SFVec3f(0.0, 0.0, 1.0), a));
}

void SFMatrix::RotationMatrix(double const& ax, double const& ay, double const& az) {
    // The angles are read first: they may be elements of this matrix.
    const double y = ay;
    const double z = az;
    PostRotateX(ax);
    PostRotateY(y);
    PostRotateZ(z);
}

SFVec3f SFMatrix::TransformPoint(SFVec3f const& p) const {
    SFVec3f out;
    TransformedPoint(Rows(m_element), p, out);
    return out;
}

SFVec3f SFMatrix::TransformVector(SFVec3f const& v) const {
    // Translation and division included, as callers have always had it.
    return TransformPoint(v);
}

SFVec3f SFMatrix::operator*(SFVec3f const& p) const {
    // The divisor is the plain sum of column 3, whatever the point: kept on purpose.
    const double w = m_element[Index4(3, 3)] + m_element[Index4(2, 3)] + m_element[Index4(1, 3)] +
                     m_element[Index4(0, 3)];
    const SFVec4f h = TransformPoint(SFVec4f(p));
    return SFVec3f(h.x / w, h.y / w, h.z / w);
}

SFVec4f SFMatrix::TransformPoint(SFVec4f const& p) const {
    Pair low;
    Pair high;
    Homogeneous(Rows(m_element), p.x, p.y, p.z, p.w, low, high);
    return SFVec4f(zq::detail::Low(low), zq::detail::High(low), zq::detail::Low(high),
                   zq::detail::High(high));
}

void SFMatrix::TransformPoints(SFVec3f const* const src, SFVec3f* const dst,
                               unsigned long n) const {
    // The rows are loaded once, before any store into dst: the loop keeps them in registers.
    const Rows rows(m_element);
    const Splats elements(m_element);
    unsigned long i = 0;
    for (; i + 1 < n; i += 2) {
        TransformedTwo(rows, elements, src + i, dst + i);
    }
    if (i < n) {
        TransformedPoint(rows, src[i], dst[i]);
    }
}

void SFMatrix::TransformPoints(SFVec4f const* const src, SFVec4f* const dst,
                               unsigned long n) const {
    for (unsigned long i = 0; i < n; ++i) {
        dst[i] = TransformPoint(src[i]);
    }
}

SFVec3f SFMatrix::UntransformPoint(SFVec3f const& p) const {
    // (p, 1) times the inverse, without the division by w.
    const SFMatrix inverse = PivotedInverse(*this);
    Pair low;
    Pair high;
    Homogeneous(Rows(inverse.m_element), p.x, p.y, p.z, 1.0, low, high);
    return SFVec3f(zq::detail::Low(low), zq::detail::High(low), zq::detail::Low(high));
}

SFVec4f SFMatrix::UntransformPoint(SFVec4f const& p) const {
    return PivotedInverse(*this).TransformPoint(p);
}
