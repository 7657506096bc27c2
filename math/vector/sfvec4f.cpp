// SFVec4f: the 4D vector: homogeneous point, RGBA colour, Euler-angle record.
#include "sfvec4f.h"

#include "vector/vector_detail.h"

#include <cmath>

namespace {

using zq::detail::HalfExtent;

/// Exact arithmetic crosses each of the four planes at most once; rounding near an edge of the
/// volume can ask for a move or two more. A segment that has not settled by then lies along
/// the boundary within rounding and is rejected, so the loop always ends.
constexpr int kMaxClipMoves = 8;

/// The outcode of an end point: its x, y, z against the rectangle, w not read.
int EndCode(const SFVec4f& p, double a, double b) {
    return p.Chop().ClipCode(a, b);
}

/// The first of the bits 1, 2, 8, 4 that code carries.
int FirstOutsideBit(int code) {
    constexpr int kOrder[] = {SFVec4f::kClipLeft, SFVec4f::kClipRight, SFVec4f::kClipBelow,
                              SFVec4f::kClipAbove};
    for (const int bit : kOrder) {
        if ((code & bit) != 0) {
            return bit;
        }
    }
    return SFVec4f::kClipInside;
}

/// Where p lies against the plane of bit: negative beyond it, 0 on it, positive on the
/// volume's side. The planes carry ClipCode's half-extents, x = ±a·z/2 and y = ±b·z/2.
double PlaneSide(const SFVec4f& p, int bit, double a, double b) {
    switch (bit) {
    case SFVec4f::kClipLeft:
        return p.x + HalfExtent(a, p.z);
    case SFVec4f::kClipRight:
        return HalfExtent(a, p.z) - p.x;
    case SFVec4f::kClipBelow:
        return p.y + HalfExtent(b, p.z);
    default:
        return HalfExtent(b, p.z) - p.y;
    }
}

/// Sets p's coordinate on the plane of bit with ClipCode's own expression, so that p no longer
/// classifies as beyond that plane whatever the rounding of the interpolation.
void PutOnPlane(SFVec4f& p, int bit, double a, double b) {
    switch (bit) {
    case SFVec4f::kClipLeft:
        p.x = -HalfExtent(a, p.z);
        break;
    case SFVec4f::kClipRight:
        p.x = HalfExtent(a, p.z);
        break;
    case SFVec4f::kClipBelow:
        p.y = -HalfExtent(b, p.z);
        break;
    default:
        p.y = HalfExtent(b, p.z);
        break;
    }
}

} // namespace

const SFVec4f SFVec4f::kZero(0.0, 0.0, 0.0, 0.0);
const SFVec4f SFVec4f::kOne(1.0, 1.0, 1.0, 1.0);

SFVec4f::SFVec4f() : x(0.0), y(0.0), z(0.0), w(1.0) {}

SFVec4f::SFVec4f(SFVec3f const& v) : x(v.x), y(v.y), z(v.z), w(1.0) {}

SFVec4f::SFVec4f(unsigned long const& rgba)
    : x(zq::detail::UnpackedChannel(rgba, 0)), y(zq::detail::UnpackedChannel(rgba, 1)),
      z(zq::detail::UnpackedChannel(rgba, 2)), w(zq::detail::UnpackedChannel(rgba, 3)) {}

SFVec4f::operator unsigned long() const {
    using zq::detail::PackedChannel;
    // w goes in unmasked in the original, but in 32 bits its higher bits fall off: the same
    // low byte.
    return PackedChannel(x) | PackedChannel(y) << 8 | PackedChannel(z) << 16 |
           PackedChannel(w) << 24;
}

void SFVec4f::FloatArray(float* const out) const {
    out[0] = static_cast<float>(x);
    out[1] = static_cast<float>(y);
    out[2] = static_cast<float>(z);
    out[3] = static_cast<float>(w);
}

double const* SFVec4f::passArray() const {
    return &x;
}

SFVec3f SFVec4f::Chop() const {
    return SFVec3f(x, y, z);
}

SFVec3f SFVec4f::Project() const {
    if (w == 0.0) {
        return Chop();
    }
    return SFVec3f(x / w, y / w, z / w);
}

double& SFVec4f::operator[](unsigned long i) {
    return i == 0 ? x : i == 1 ? y : i == 2 ? z : w;
}

double SFVec4f::operator[](unsigned long i) const {
    return i == 0 ? x : i == 1 ? y : i == 2 ? z : w;
}

SFVec4f SFVec4f::operator+(SFVec4f const& v) const {
    return SFVec4f(x + v.x, y + v.y, z + v.z, w + v.w);
}

SFVec4f SFVec4f::operator-(SFVec4f const& v) const {
    return SFVec4f(x - v.x, y - v.y, z - v.z, w - v.w);
}

SFVec4f SFVec4f::operator*(SFVec4f const& v) const {
    return SFVec4f(x * v.x, y * v.y, z * v.z, w * v.w);
}

SFVec4f SFVec4f::operator/(SFVec4f const& v) const {
    return SFVec4f(x / v.x, y / v.y, z / v.z, w / v.w);
}

SFVec4f& SFVec4f::operator+=(SFVec4f const& v) {
    return *this = *this + v;
}

SFVec4f SFVec4f::operator+(double const& d) const {
    return SFVec4f(x + d, y + d, z + d, w + d);
}

SFVec4f SFVec4f::operator-(double const& d) const {
    return SFVec4f(x - d, y - d, z - d, w - d);
}

SFVec4f SFVec4f::operator*(double const& d) const {
    return SFVec4f(x * d, y * d, z * d, w * d);
}

SFVec4f SFVec4f::operator/(double const& d) const {
    return SFVec4f(x / d, y / d, z / d, w / d);
}

double SFVec4f::DotProduct(SFVec4f const& v) const {
    return x * v.x + y * v.y + z * v.z + w * v.w;
}

double SFVec4f::Magnitude() const {
    return DotProduct(*this);
}

bool SFVec4f::operator==(SFVec4f const& v) const {
    return x == v.x && y == v.y && z == v.z && w == v.w;
}

bool SFVec4f::operator!=(SFVec4f const& v) const {
    return !(*this == v);
}

bool SFVec4f::operator<(SFVec4f const& v) const {
    return std::sqrt(v.Magnitude()) > std::sqrt(Magnitude());
}

bool SFVec4f::operator>(SFVec4f const& v) const {
    // The very test of operator<, kept: callers have always had a > b true when b is longer.
    return *this < v;
}

SFVec4f::KClipCode SFVec4f::ClipCode(SFVec4f const& v, double const& a, double const& b) const {
    return static_cast<KClipCode>(zq::detail::ClipCodeOf(v.x, v.y, v.z, a, b));
}

bool SFVec4f::ClipVector(SFVec4f& other, double const& a, double const& b) {
    SFVec4f ends[2] = {*this, other};
    int codes[2] = {EndCode(ends[0], a, b), EndCode(ends[1], a, b)};
    for (int moves = 0; (codes[0] | codes[1]) != 0; ++moves) {
        if ((codes[0] & codes[1]) != 0 || moves == kMaxClipMoves) {
            return false;
        }
        const int i = codes[0] != 0 ? 0 : 1;
        SFVec4f& end = ends[i];
        const SFVec4f& opposite = ends[1 - i];
        const int bit = FirstOutsideBit(codes[i]);
        const double endSide = PlaneSide(end, bit, a, b);
        const double oppositeSide = PlaneSide(opposite, bit, a, b);
        if (!(oppositeSide >= 0.0)) {
            return false; // both ends beyond the same plane: wholly outside
        }
        // endSide < 0 <= oppositeSide, so t lies in (0, 1] and the divisor is never zero.
        const double t = endSide / (endSide - oppositeSide);
        end = end + (opposite - end) * t;
        PutOnPlane(end, bit, a, b);
        codes[i] = EndCode(end, a, b);
    }
    *this = ends[0];
    other = ends[1];
    return true;
}
