// C3Matrix: the 3x3 rotation and orientation matrix.
#include "c3matrix.h"

#include "cquat.h"
#include "sfmatrix.h"
#include "transform/rotation_detail.h"

#include <cmath>

namespace {

/// The linear index of e[r][c].
constexpr int Index(int r, int c) {
    return 3 * r + c;
}

} // namespace

C3Matrix::C3Matrix() : m_word(0), m_element{} {}

C3Matrix::C3Matrix(C3Matrix const& m) : m_word(m.m_word) {
    m.GetMatrix(m_element);
}

C3Matrix::C3Matrix(double c00, double c10, double c20, double c01, double c11, double c21,
                   double c02, double c12, double c22)
    : m_word(0), m_element{c00, c01, c02, c10, c11, c12, c20, c21, c22} {}

C3Matrix::C3Matrix(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c)
    : C3Matrix(a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z) {}

C3Matrix::C3Matrix(SFMatrix* m) : m_word(0) {
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            m_element[Index(r, c)] = (*m)[4 * r + c];
        }
    }
}

C3Matrix::C3Matrix(CQuat* q) : m_word(0) {
    // No guard: a zero quaternion gives infinities and NaN.
    const double s = 2.0 / (q->x * q->x + q->y * q->y + q->z * q->z + q->w * q->w);
    zq::detail::QuaternionRotation(*q, s, m_element);
}

C3Matrix::C3Matrix(SFVec3f const& axis, double a) : m_word(0) {
    // The axis is used as given: a non-unit axis does not give a rotation.
    zq::detail::AxisRotation(axis, std::cos(a), std::sin(a), m_element);
}

C3Matrix& C3Matrix::operator=(C3Matrix const& m) {
    m_word = m.m_word; // carried along, as callers' copies always have
    m.GetMatrix(m_element);
    return *this;
}

void C3Matrix::ExtractBasisVectors(SFVec3f& a, SFVec3f& b, SFVec3f& c) const {
    a = SFVec3f(m_element[0], m_element[3], m_element[6]);
    b = SFVec3f(m_element[1], m_element[4], m_element[7]);
    c = SFVec3f(m_element[2], m_element[5], m_element[8]);
}

void C3Matrix::Zero() {
    for (double& e : m_element) {
        e = 0.0;
    }
}

void C3Matrix::Identity() {
    Zero();
    m_element[0] = 1.0;
    m_element[4] = 1.0;
    m_element[8] = 1.0;
}

double& C3Matrix::operator[](long i) {
    return m_element[i];
}

double C3Matrix::operator[](long i) const {
    return m_element[i];
}

double* C3Matrix::GetMatrix(double* const out) const {
    for (int i = 0; i < 9; ++i) {
        out[i] = m_element[i];
    }
    return out;
}

C3Matrix* C3Matrix::MatMul(C3Matrix const& B) const {
    return new C3Matrix(*this * B);
}

C3Matrix C3Matrix::operator*(C3Matrix const& B) const {
    // Computed into a local: the original's heap temporary is not needed (nor leaked).
    C3Matrix product;
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 3; ++k) {
            double sum = 0.0;
            for (int j = 0; j < 3; ++j) {
                sum += B.m_element[Index(i, j)] * m_element[Index(j, k)];
            }
            product.m_element[Index(i, k)] = sum;
        }
    }
    return product;
}

SFVec3f C3Matrix::operator*(SFVec3f const& v) const {
    return v.MulPointByMatrix(this);
}

void C3Matrix::MultiplyIn(C3Matrix* B) {
    *this = *this * *B;
}

C3Matrix* C3Matrix::Transpose(C3Matrix* out) const {
    const C3Matrix source(*this); // out may be this
    C3Matrix* target = out != nullptr ? out : new C3Matrix;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            target->m_element[Index(r, c)] = source.m_element[Index(c, r)];
        }
    }
    return target;
}

void C3Matrix::RotationMatrix(double a, double b, double c) {
    const double c1 = std::cos(a);
    const double s1 = std::sin(a);
    const double c2 = std::cos(b);
    const double s2 = std::sin(b);
    const double c3 = std::cos(c);
    const double s3 = std::sin(c);
    m_element[0] = c2 * c1;
    m_element[1] = s3 * s2 * c1 - c3 * s1;
    m_element[2] = c3 * s2 * c1 + s3 * s1;
    m_element[3] = s1 * c2;
    m_element[4] = s2 * s1 * s3 + c3 * c1;
    m_element[5] = s2 * s1 * c3 - s3 * c1;
    m_element[6] = -s2;
    m_element[7] = s3 * c2;
    m_element[8] = c3 * c2;
}

namespace {

/// Rows p and q of e become (p·c − q·s, p·s + q·c), column by column: a textbook turn.
void TurnRows(double* e, int p, int q, double a) {
    const double c = std::cos(a);
    const double s = std::sin(a);
    for (int j = 0; j < 3; ++j) {
        const double ep = e[Index(p, j)];
        const double eq = e[Index(q, j)];
        e[Index(p, j)] = ep * c - eq * s;
        e[Index(q, j)] = ep * s + eq * c;
    }
}

} // namespace

void C3Matrix::PostRotateX(double a) {
    TurnRows(m_element, 1, 2, a);
}

void C3Matrix::PostRotateY(double a) {
    TurnRows(m_element, 2, 0, a);
}

void C3Matrix::PostRotateZ(double a) {
    TurnRows(m_element, 0, 1, a);
}

void C3Matrix::Rotate(double a, EAxis axis) {
    const double c = std::cos(a);
    const double s = std::sin(a);
    C3Matrix r; // all zeros: an unknown code zeroes the matrix, as callers have always had it
    switch (axis) {
    case kYAxis:
        r = C3Matrix(c, 0.0, -s, 0.0, 1.0, 0.0, s, 0.0, c);
        break;
    case kXAxis: // the opposite sense to PostRotateX, kept on purpose
        r = C3Matrix(1.0, 0.0, 0.0, 0.0, c, -s, 0.0, s, c);
        break;
    case kZAxis:
        r = C3Matrix(c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0);
        break;
    default:
        break;
    }
    MultiplyIn(&r);
}

SFVec3f C3Matrix::RecoverHeading() const {
    return SFVec3f(0.0, 0.0, 0.0);
}

SFVec3f C3Matrix::RecoverAttitude() const {
    return SFVec3f(0.0, 0.0, 0.0);
}
