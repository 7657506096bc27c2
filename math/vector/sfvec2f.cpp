// SFVec2f: the 2D vector and the planar predicates of the triangulation.
#include "sfvec2f.h"

#include "sfvec3f.h"
#include "vector/planar.h"
#include "vector/vector_detail.h"
#include "zqexception.h"

#include <cmath>
#include <cstdint>
#include <utility>

namespace {

/// The distance below which two points are equal: the library tolerance, held on its own.
constexpr double kEqualDistance = 1e-5;
/// Images are at most 1024 wide and high: 2048 itself is rejected.
constexpr double kImageLimit = 2048.0;
/// The fixed height of EulerAngle's elevation.
constexpr double kEyeHeight = 100.0;

/// Throws record 8 for a dimension below 0 or of 2048 or more.
void CheckImageDimension(double d) {
    if (d < 0.0 || d >= kImageLimit) {
        throw CZqMathException(8, nullptr);
    }
}

/// The smallest whole exponent e with 2^e >= d (0 for d <= 1).
int HarmonicExponent(double d) {
    int e = 0;
    while (std::ldexp(1.0, e) < d) {
        ++e;
    }
    return e;
}

/// Drops the whole part of a value beyond ±1; ±1 themselves stay (deliberately).
double WrapBeyondOne(double v) {
    if (v > 1.0) {
        return v - std::floor(v);
    }
    if (v < -1.0) {
        return v - std::ceil(v);
    }
    return v;
}

/// A component truncated toward zero as a 32-bit integer (low bits kept, as the original did).
int TruncatedCoordinate(double v) {
    return static_cast<std::int32_t>(zq::detail::TruncatedLow32(v));
}

} // namespace

const SFVec2f SFVec2f::kZero(0.0, 0.0);
const SFVec2f SFVec2f::kOne(1.0, 1.0);

SFVec2f::SFVec2f() : x(0.0), y(0.0) {}

SFVec2f::SFVec2f(double* const v) : x(v[0]), y(v[1]) {}

SFVec2f::SFVec2f(const CPoint& p) : x(p.x), y(p.y) {}

SFVec2f::SFVec2f(const SFVec3f& v, bool homogenize)
    : x(homogenize ? v.x / v.z : v.x), y(homogenize ? v.y / v.z : v.y) {}

SFVec2f::operator CPoint() const {
    return CPoint(TruncatedCoordinate(x), TruncatedCoordinate(y));
}

void SFVec2f::operator=(const SFVec2f& v) {
    x = v.x;
    y = v.y;
}

double& SFVec2f::operator[](int i) {
    return i == 0 ? x : y;
}

double SFVec2f::X() const {
    return x;
}

double SFVec2f::Y() const {
    return y;
}

SFVec2f SFVec2f::operator+(const SFVec2f& v) const {
    return SFVec2f(x + v.x, y + v.y);
}

SFVec2f SFVec2f::operator-(const SFVec2f& v) const {
    return SFVec2f(x - v.x, y - v.y);
}

SFVec2f SFVec2f::operator*(const SFVec2f& v) const {
    return SFVec2f(x * v.x, y * v.y);
}

SFVec2f SFVec2f::operator/(const SFVec2f& v) const {
    return SFVec2f(x / v.x, y / v.y);
}

SFVec2f SFVec2f::operator+(const double& d) const {
    return SFVec2f(x + d, y + d);
}

SFVec2f SFVec2f::operator-(const double& d) const {
    return SFVec2f(x - d, y - d);
}

SFVec2f SFVec2f::operator*(const double& d) const {
    return SFVec2f(x * d, y * d);
}

SFVec2f SFVec2f::operator/(const double& d) const {
    return SFVec2f(x / d, y / d);
}

SFVec2f& SFVec2f::operator+=(const SFVec2f& v) {
    *this = *this + v;
    return *this;
}

SFVec2f& SFVec2f::operator-=(const SFVec2f& v) {
    *this = *this - v;
    return *this;
}

SFVec2f& SFVec2f::operator*=(const SFVec2f& v) {
    *this = *this * v;
    return *this;
}

SFVec2f& SFVec2f::operator/=(const SFVec2f& v) {
    *this = *this / v;
    return *this;
}

SFVec2f& SFVec2f::operator+=(const double& d) {
    *this = *this + d;
    return *this;
}

SFVec2f& SFVec2f::operator-=(const double& d) {
    *this = *this - d;
    return *this;
}

SFVec2f& SFVec2f::operator*=(const double& d) {
    *this = *this * d;
    return *this;
}

SFVec2f& SFVec2f::operator/=(const double& d) {
    *this = *this / d;
    return *this;
}

double SFVec2f::DotProduct(const SFVec2f& v) const {
    return x * v.x + y * v.y;
}

SFVec2f SFVec2f::Combine(const SFVec2f& a, const double& s, const double& t) const {
    return SFVec2f(x * s + a.x * t, y * s + a.y * t);
}

SFVec2f SFVec2f::LinearInterp(const SFVec2f& b, const double& t) const {
    return SFVec2f((b.x - x) * t + x, (b.y - y) * t + y);
}

SFVec2f SFVec2f::Invert() const {
    return SFVec2f(-x, -y);
}

SFVec2f SFVec2f::MakePerpendicular() const {
    return SFVec2f(-y, x);
}

SFVec2f SFVec2f::Remainder(const SFVec2f& v) const {
    return SFVec2f(std::fmod(x, v.x), std::fmod(y, v.y));
}

SFVec2f SFVec2f::Minimums(const SFVec2f& v) const {
    return SFVec2f(zq::detail::LessOrSecond(x, v.x), zq::detail::LessOrSecond(y, v.y));
}

SFVec2f SFVec2f::Maximums(const SFVec2f& v) const {
    return SFVec2f(zq::detail::GreaterOrSecond(x, v.x), zq::detail::GreaterOrSecond(y, v.y));
}

void SFVec2f::Exchange(SFVec2f& v) {
    std::swap(x, v.x);
    std::swap(y, v.y);
}

double SFVec2f::Magnitude() const {
    return x * x + y * y;
}

double SFVec2f::Length() const {
    return std::sqrt(Magnitude());
}

double SFVec2f::norm() const {
    return Length();
}

double SFVec2f::DistanceTo(const SFVec2f& v) const {
    return zq::detail::Distance(*this, v);
}

void SFVec2f::Polar(double& radius, double& angle) const {
    radius = Length();
    angle = std::atan2(y, x);
}

SFVec2f SFVec2f::Normalize() const {
    const double length = Length();
    if (length == 0.0 || std::isnan(length)) {
        return *this;
    }
    // Divides, unlike SFVec3f which multiplies by the reciprocal: the results differ in the
    // last bit and callers have each kept their own.
    return *this / length;
}

SFVec2f SFVec2f::Scale(const double& length) const {
    const double current = Length();
    if (current == 0.0) {
        return *this;
    }
    return *this * (length / current);
}

bool SFVec2f::operator==(const SFVec2f& v) const {
    return DistanceTo(v) < kEqualDistance;
}

bool SFVec2f::operator!=(const SFVec2f& v) const {
    return !(*this == v);
}

double SFVec2f::TriArea(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c) {
    return zq::detail::TriArea(a, b, c);
}

int SFVec2f::ccw(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c) {
    return zq::detail::Ccw(a, b, c);
}

int SFVec2f::InCircle(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c, const SFVec2f& d) {
    // The terms are formed and summed in exactly this order: the triangulation relies on the
    // sign of this very sum, rounding included. No tolerance.
    const double det = (a.x * a.x + a.y * a.y) * zq::detail::TriArea(b, c, d) -
                       (b.x * b.x + b.y * b.y) * zq::detail::TriArea(a, c, d) +
                       (c.x * c.x + c.y * c.y) * zq::detail::TriArea(a, b, d) -
                       (d.x * d.x + d.y * d.y) * zq::detail::TriArea(a, b, c);
    return det > 0.0 ? 1 : 0;
}

SFVec2f SFVec2f::HarmonicLimits(SFVec2f& remainder) const {
    CheckImageDimension(x);
    CheckImageDimension(y);
    const int ex = HarmonicExponent(x);
    const int ey = HarmonicExponent(y);
    remainder = SFVec2f(std::ldexp(1.0, ex) - x, std::ldexp(1.0, ey) - y);
    return SFVec2f(ex, ey);
}

bool SFVec2f::IsBinaryHarmonic() const {
    SFVec2f remainder;
    HarmonicLimits(remainder);
    return remainder.x == 0.0 && remainder.y == 0.0;
}

void SFVec2f::RepeatingIntegralArea() {
    x = WrapBeyondOne(x);
    y = WrapBeyondOne(y);
}

void SFVec2f::EulerAngle() {
    const double r = Length();
    const double h = std::sqrt(kEyeHeight * kEyeHeight + r * r);
    x = kEyeHeight / h;
    y = r / h;
}
