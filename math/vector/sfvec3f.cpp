// SFVec3f: the 3D vector, the library's point, direction and colour.
#include "sfvec3f.h"

#include "sfvec4f.h"
#include "vector/vector_detail.h"
#include "zqexception.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace {

/// π/180 rounded to single precision on purpose: callers depend on the exact products.
constexpr double kSingleDegree = static_cast<float>(3.14159265358979323846 / 180.0);

/// -1.0 below 0.0, else 1.0 (zero and NaN give 1.0).
double SignOf(double v) {
    return v < 0.0 ? -1.0 : 1.0;
}

/// Negates a value below 0.0 and leaves every other one as it is, -0.0 and NaN included.
void NegateBelowZero(double& v) {
    if (v < 0.0) {
        v *= -1.0;
    }
}

/// 1 when v is 0.0 or NaN: the original's comparison took an unordered result as equal.
short ZeroOrNaN(double v) {
    return zq::detail::EqualOrUnordered(v, 0.0) ? 1 : 0;
}

// The two helpers below let Normalize run without calls: exported members reach one another
// only through the symbol table, which keeps the compiler from inlining them.

/// v scaled by s.
SFVec3f Scaled(const SFVec3f& v, double s) {
    return SFVec3f(v.x * s, v.y * s, v.z * s);
}

/// The squared length of v, in double.
double SquaredLengthOf(const SFVec3f& v) {
    return v.x * v.x + v.y * v.y + v.z * v.z;
}

} // namespace

const SFVec3f SFVec3f::kZero(0.0, 0.0, 0.0);
const SFVec3f SFVec3f::kOne(1.0, 1.0, 1.0);

SFVec3f::SFVec3f(double* const v) : x(v[0]), y(v[1]), z(v[2]) {}

SFVec3f::SFVec3f(const SFVec2f& v) : x(v.x), y(v.y), z(1.0) {}

SFVec3f::SFVec3f(const SFVec4f& v, bool homogenize) : x(v.x), y(v.y), z(v.z) {
    // w == 1.0 holds for exactly one bit pattern, so this is the original's bit test.
    if (homogenize && v.w != 0.0 && v.w != 1.0) {
        x /= v.w;
        y /= v.w;
        z /= v.w;
    }
}

SFVec3f::SFVec3f(const unsigned long& rgb)
    : x(zq::detail::UnpackedChannel(rgb, 0)), y(zq::detail::UnpackedChannel(rgb, 1)),
      z(zq::detail::UnpackedChannel(rgb, 2)) {}

SFVec3f::SFVec3f(SFVec3f::K2DPlane plane, const double& radius, const double& angle) {
    const double c = radius * std::cos(angle);
    const double s = radius * std::sin(angle);
    switch (plane) {
    case kXYPlane:
        *this = SFVec3f(c, s, 0.0);
        break;
    case kYZPlane:
        *this = SFVec3f(0.0, s, c);
        break;
    case kXZPlane:
        *this = SFVec3f(c, 0.0, s);
        break;
    default:
        throw CZqMathException(9, nullptr);
    }
}

SFVec3f::operator unsigned long() const {
    using zq::detail::PackedChannel;
    return PackedChannel(x) | PackedChannel(y) << 8 | PackedChannel(z) << 16;
}

char* SFVec3f::String(char* buffer) const {
    std::sprintf(buffer, "%f %f %f", x, y, z);
    return buffer;
}

void SFVec3f::FloatArray(float* out) const {
    out[0] = static_cast<float>(x);
    out[1] = static_cast<float>(y);
    out[2] = static_cast<float>(z);
}

double& SFVec3f::operator[](unsigned long i) {
    return i == 0 ? x : i == 1 ? y : z;
}

double SFVec3f::operator[](unsigned long i) const {
    return i == 0 ? x : i == 1 ? y : z;
}

double& SFVec3f::X() {
    return x;
}

double& SFVec3f::Y() {
    return y;
}

double& SFVec3f::Z() {
    return z;
}

double SFVec3f::X() const {
    return x;
}

double SFVec3f::Y() const {
    return y;
}

double SFVec3f::Z() const {
    return z;
}

double& SFVec3f::Red() {
    return x;
}

double& SFVec3f::Green() {
    return y;
}

double& SFVec3f::Blue() {
    return z;
}

double SFVec3f::Red() const {
    return x;
}

double SFVec3f::Green() const {
    return y;
}

double SFVec3f::Blue() const {
    return z;
}

void SFVec3f::X(double) const {}

void SFVec3f::Y(double) const {}

void SFVec3f::Z(double) const {}

void SFVec3f::Red(double) const {}

void SFVec3f::Green(double) const {}

void SFVec3f::Blue(double) const {}

SFVec2f SFVec3f::XY() const {
    return SFVec2f(x, y);
}

SFVec2f SFVec3f::YZ() const {
    return SFVec2f(y, z);
}

SFVec2f SFVec3f::XZ() const {
    return SFVec2f(x, z);
}

void SFVec3f::SetXY(const SFVec2f& v) {
    x = v.x;
    y = v.y;
}

void SFVec3f::SetYZ(const SFVec2f& v) {
    y = v.x;
    z = v.y;
}

void SFVec3f::SetXZ(const SFVec2f& v) {
    // Writes y and z, exactly as SetYZ: callers have always had it so.
    SetYZ(v);
}

SFVec3f SFVec3f::operator+(const SFVec3f& v) const {
    return SFVec3f(x + v.x, y + v.y, z + v.z);
}

SFVec3f SFVec3f::operator-(const SFVec3f& v) const {
    return SFVec3f(x - v.x, y - v.y, z - v.z);
}

SFVec3f SFVec3f::operator*(const SFVec3f& v) const {
    return SFVec3f(x * v.x, y * v.y, z * v.z);
}

SFVec3f SFVec3f::operator/(const SFVec3f& v) const {
    return SFVec3f(x / v.x, y / v.y, z / v.z);
}

SFVec3f SFVec3f::operator+(const double& d) const {
    return SFVec3f(x + d, y + d, z + d);
}

SFVec3f SFVec3f::operator-(const double& d) const {
    return SFVec3f(x - d, y - d, z - d);
}

SFVec3f SFVec3f::operator*(double s) const {
    return Scaled(*this, s);
}

SFVec3f SFVec3f::operator/(const double& d) const {
    return SFVec3f(x / d, y / d, z / d);
}

SFVec3f& SFVec3f::operator+=(const SFVec3f& v) {
    return *this = *this + v;
}

SFVec3f& SFVec3f::operator-=(const SFVec3f& v) {
    return *this = *this - v;
}

SFVec3f& SFVec3f::operator*=(const SFVec3f& v) {
    return *this = *this * v;
}

SFVec3f& SFVec3f::operator/=(const SFVec3f& v) {
    return *this = *this / v;
}

double SFVec3f::DotProduct(const SFVec3f& v) const {
    return x * v.x + y * v.y + z * v.z;
}

SFVec3f SFVec3f::CrossProduct(const SFVec3f& v) const {
    return SFVec3f(y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x);
}

double SFVec3f::ScalarTripleProduct(const SFVec3f& a, const SFVec3f& b) const {
    return DotProduct(a.CrossProduct(b));
}

SFVec3f SFVec3f::Combine(const SFVec3f& a, const double& s, const double& t) const {
    return *this * s + a * t;
}

SFVec3f SFVec3f::LinearInterp(const SFVec3f& b, const double& t) const {
    return (b - *this) * t + *this;
}

SFVec3f SFVec3f::Invert() const {
    return *this * -1.0;
}

SFVec3f SFVec3f::Inverse() const {
    return SFVec3f(1.0 / x, 1.0 / y, 1.0 / z);
}

SFVec3f SFVec3f::Remainder(const SFVec3f& v) const {
    return SFVec3f(std::fmod(x, v.x), std::fmod(y, v.y), std::fmod(z, v.z));
}

SFVec3f SFVec3f::Power(const SFVec3f& v) const {
    return SFVec3f(std::pow(x, v.x), std::pow(y, v.y), std::pow(z, v.z));
}

SFVec3f SFVec3f::FractionalComponent() const {
    return SFVec3f(x - std::floor(x), y - std::floor(y), z - std::floor(z));
}

SFVec3f SFVec3f::AngleToRadian() const {
    return *this * kSingleDegree;
}

SFVec3f& SFVec3f::Absolute() {
    NegateBelowZero(x);
    NegateBelowZero(y);
    NegateBelowZero(z);
    return *this;
}

SFVec3f SFVec3f::Signs() const {
    return SFVec3f(SignOf(x), SignOf(y), SignOf(z));
}

SFVec3f& SFVec3f::ReverseOrder() {
    std::swap(x, z);
    return *this;
}

void SFVec3f::Exchange(SFVec3f& v) {
    std::swap(*this, v);
}

double SFVec3f::Magnitude() const {
    return SquaredLengthOf(*this);
}

double SFVec3f::Length() const {
    return std::sqrt(SquaredLengthOf(*this));
}

SFVec3f SFVec3f::Normalize() const {
    const double length = std::sqrt(SquaredLengthOf(*this));
    // Exact tests on purpose: a unit vector comes back bit for bit, a zero one stays zero, and
    // so does one of NaN length. (A sum of squares is never below +0.0, so "not above 0.0" is
    // exactly "0.0 or NaN".)
    if (!(length > 0.0) || length == 1.0) {
        return *this;
    }
    // Multiplies by the reciprocal, so (3, 0, 4) gives x = 0.6000000000000001.
    return Scaled(*this, 1.0 / length);
}

SFVec3f SFVec3f::Normalize(double& length) const {
    length = Length();
    return Normalize();
}

SFVec3f SFVec3f::Scale(const double& length) const {
    const double current = Length();
    if (current == 0.0) {
        return *this;
    }
    return *this * (length / current);
}

double SFVec3f::Angle(const SFVec3f& v) const {
    // Kept as it always was: z takes no part, and the result is the logarithm.
    const double a = Length();
    const double b = v.Length();
    const double p = x * v.x + y * v.y;
    const double q = -2.0 * p;
    const double d = std::pow(q, 2.0) - 4.0 * std::pow(a, 2.0) * std::pow(b, 2.0);
    const double t = (2.0 * p - std::sqrt(d)) / (2.0 * a * b);
    return std::log(t);
}

bool SFVec3f::operator==(const SFVec3f& v) const {
    using zq::detail::EqualOrUnordered;
    return EqualOrUnordered(x, v.x) && EqualOrUnordered(y, v.y) && EqualOrUnordered(z, v.z);
}

bool SFVec3f::operator!=(const SFVec3f& v) const {
    return !(*this == v);
}

// The original's unordered comparisons made a NaN magnitude answer < and <= with false and
// > and >= with true against a vector, and the other way round against a double.

bool SFVec3f::operator<(const SFVec3f& v) const {
    return Magnitude() < v.Magnitude();
}

bool SFVec3f::operator>(const SFVec3f& v) const {
    return !(Magnitude() <= v.Magnitude());
}

bool SFVec3f::operator<=(const SFVec3f& v) const {
    return Magnitude() <= v.Magnitude();
}

bool SFVec3f::operator>=(const SFVec3f& v) const {
    return !(Magnitude() < v.Magnitude());
}

bool SFVec3f::operator<(const double& d) const {
    return !(Magnitude() >= d);
}

bool SFVec3f::operator>(const double& d) const {
    return Magnitude() > d;
}

bool SFVec3f::operator<=(const double& d) const {
    return !(Magnitude() > d);
}

bool SFVec3f::operator>=(const double& d) const {
    return Magnitude() >= d;
}

bool SFVec3f::IsNaN() const {
    return !std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z);
}

bool SFVec3f::IsNormalLinear() const {
    return Zeros() >= 2;
}

short SFVec3f::Zeros() const {
    return static_cast<short>(ZeroOrNaN(x) + ZeroOrNaN(y) + ZeroOrNaN(z));
}

double SFVec3f::GreatestScalar() const {
    // |x| is compared with y itself, not |y|: (2, -3, 1) gives 2. Callers depend on it.
    if (std::fabs(x) >= y && std::fabs(x) >= std::fabs(z)) {
        return x;
    }
    if (std::fabs(y) >= std::fabs(x) && std::fabs(y) >= std::fabs(z)) {
        return y;
    }
    return z;
}

int SFVec3f::GreatestScalarIndex() const {
    if (std::fabs(x) >= std::fabs(y) && std::fabs(x) >= std::fabs(z)) {
        return 0;
    }
    if (std::fabs(y) >= std::fabs(x) && std::fabs(y) >= std::fabs(z)) {
        return 1;
    }
    return 2;
}

double SFVec3f::SmallestScalar() const {
    // Strict tests: a tie between x and y falls through to z, so (1, 1, 5) gives 5.
    if (x < y && x < z) {
        return x;
    }
    if (y < x && y < z) {
        return y;
    }
    return z;
}

SFVec3f SFVec3f::Maximums(const SFVec3f& v) const {
    using zq::detail::GreaterOrSecond;
    return SFVec3f(GreaterOrSecond(x, v.x), GreaterOrSecond(y, v.y), GreaterOrSecond(z, v.z));
}

SFVec3f SFVec3f::Minimums(const SFVec3f& v) const {
    using zq::detail::LessOrSecond;
    return SFVec3f(LessOrSecond(x, v.x), LessOrSecond(y, v.y), LessOrSecond(z, v.z));
}

SFVec3f::KClipCode3 SFVec3f::ClipCode(const double& a, const double& b) const {
    return static_cast<KClipCode3>(zq::detail::ClipCodeOf(x, y, z, a, b));
}

SFVec3f& SFVec3f::Spline(double t, const SFVec3f& p0, const SFVec3f& p1, const SFVec3f& p2,
                         const SFVec3f& p3) {
    // Catmull-Rom weights. Everything is computed before this vector is written, since it may
    // be one of the four points.
    const double t2 = t * t;
    const double t3 = t2 * t;
    const double w0 = (-t3 + 2.0 * t2 - t) / 2.0;
    const double w1 = (3.0 * t3 - 5.0 * t2 + 2.0) / 2.0;
    const double w2 = (-3.0 * t3 + 4.0 * t2 + t) / 2.0;
    const double w3 = (t3 - t2) / 2.0;
    return *this = p0 * w0 + p1 * w1 + p2 * w2 + p3 * w3;
}
