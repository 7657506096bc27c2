// CQuat: the quaternion, computed by the single-precision kernel.
#include "cquat.h"

#include "transform/quat_kernel.h"

#include <cmath>

namespace {

using zq::detail::FQuat;

/// q's components rounded to single precision: the kernel's operand.
FQuat Rounded(const CQuat& q) {
    return FQuat{static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z),
                 static_cast<float>(q.w)};
}

/// The kernel's result widened to double.
CQuat Widened(const FQuat& q) {
    return CQuat(q.x, q.y, q.z, q.w);
}

/// Nine zeros and the rest: the further fields hold no meaning, but a defined one.
SFMatrix ZeroMatrix() {
    SFMatrix m;
    m.Zero();
    return m;
}

} // namespace

CQuat::CQuat() : CQuat(0.0, 0.0, 0.0, 1.0) {}

CQuat::CQuat(double initX, double initY, double initZ, double initW)
    : x(initX), y(initY), z(initZ), w(initW), m_vector(0.0, 0.0, 0.0), m_value(0.0),
      m_matrix(ZeroMatrix()), m_word(0) {}

CQuat::CQuat(SFVec3f const& axis, double angle)
    : CQuat(Widened(
          zq::detail::QuatFromAxisAngle(static_cast<float>(axis.x), static_cast<float>(axis.y),
                                        static_cast<float>(axis.z), static_cast<float>(angle)))) {}

CQuat::CQuat(SFVec3f const& v)
    : CQuat(Widened(zq::detail::QuatFromYawPitchRoll(
          static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)))) {}

CQuat::CQuat(SFMatrix const& m) : CQuat() {
    float f[16];
    for (int i = 0; i < 16; ++i) {
        f[i] = static_cast<float>(m[i]);
    }
    *this = Widened(zq::detail::QuatFromMatrix(f));
}

CQuat::CQuat(CQuat const& q)
    : x(q.x), y(q.y), z(q.z), w(q.w), m_vector(q.m_vector), m_value(q.m_value),
      m_matrix(q.m_matrix), m_word(q.m_word) {}

CQuat& CQuat::operator=(CQuat const& q) {
    x = q.x;
    y = q.y;
    z = q.z;
    w = q.w;
    m_vector = q.m_vector;
    m_value = q.m_value;
    m_matrix = q.m_matrix; // copies nothing onto itself
    m_word = q.m_word;
    return *this;
}

void CQuat::Identity() {
    x = 0.0;
    y = 0.0;
    z = 0.0;
    w = 1.0;
}

namespace {

/// Stores the widened kernel result in q's four components; the further fields stay.
void Store(CQuat& q, const FQuat& r) {
    q.x = r.x;
    q.y = r.y;
    q.z = r.z;
    q.w = r.w;
}

} // namespace

void CQuat::Multiply(CQuat const& a, CQuat const& b) {
    Store(*this, zq::detail::QuatMultiply(Rounded(a), Rounded(b)));
}

void CQuat::Conjugate(CQuat const& q) {
    // x, y, z pass through single precision; w stays double, as callers have always had it.
    const FQuat r = Rounded(q);
    x = -r.x;
    y = -r.y;
    z = -r.z;
    w = q.w;
}

void CQuat::Inverse(CQuat const& q) {
    Store(*this, zq::detail::QuatInverse(Rounded(q)));
}

void CQuat::Normalize(CQuat const& q) {
    Store(*this, zq::detail::QuatNormalize(Rounded(q)));
}

void CQuat::Exp(CQuat const& q) {
    Store(*this, zq::detail::QuatExp(Rounded(q)));
}

void CQuat::Ln(CQuat const& q) {
    Store(*this, zq::detail::QuatLn(Rounded(q)));
}

double CQuat::DotProduct(CQuat const& q) const {
    // Only q.z is rounded to single precision: callers depend on the exact sum.
    const double qz = static_cast<float>(q.z);
    return q.w * w + qz * z + q.y * y + q.x * x;
}

double CQuat::Length() const {
    return std::sqrt(Magnitude());
}

double CQuat::Magnitude() const {
    return x * x + y * y + z * z + w * w;
}

bool CQuat::IsIdentity() const {
    // x is compared in double, the others in single precision: the original's mixed test.
    return x == 0.0 && static_cast<float>(y) == 0.0f && static_cast<float>(z) == 0.0f &&
           static_cast<float>(w) == 1.0f;
}

SFMatrix CQuat::RotationMatrix() const {
    float f[16];
    zq::detail::QuatToMatrix(Rounded(*this), f);
    SFMatrix m;
    for (int i = 0; i < 16; ++i) {
        m[i] = f[i];
    }
    return m;
}

CQuat CQuat::Slerp(CQuat const& q, double t) const {
    return Widened(zq::detail::QuatSlerp(Rounded(*this), Rounded(q), static_cast<float>(t)));
}

CQuat CQuat::Squad(CQuat const& a, CQuat const& b, CQuat const& c, double t) const {
    return Widened(zq::detail::QuatSquad(Rounded(*this), Rounded(a), Rounded(b), Rounded(c),
                                         static_cast<float>(t)));
}

void CQuat::BaryCenter(CQuat const& a, CQuat const& b, CQuat const& c, double f, double g) {
    Store(*this, zq::detail::QuatBaryCentric(Rounded(a), Rounded(b), Rounded(c),
                                             static_cast<float>(f), static_cast<float>(g)));
}

SFVec3f CQuat::ToAxisAngle(double& angle) const {
    float axis[3];
    float a;
    zq::detail::QuatToAxisAngle(Rounded(*this), axis, a);
    angle = a;
    return SFVec3f(axis[0], axis[1], axis[2]);
}
