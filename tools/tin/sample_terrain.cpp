// sample_terrain.cpp: a jittered grid and a height formula.
#include "sample_terrain.h"

#include <cmath>
#include <cstdint>

namespace zq::tool {
namespace {

constexpr int kSide = 60;
constexpr double kSpacing = 5.0;

/// A well-mixed 32-bit hash of the grid position: the jitter must not depend on a library's
/// random generator, which differs between platforms.
std::uint32_t Hash(std::uint32_t i, std::uint32_t j) {
    std::uint32_t h = (i * 0x9E3779B1u) ^ ((j + 0x7F4A7C15u) * 0x85EBCA77u);
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}

/// A jitter in [-0.35, 0.35) grid spacings from 16 bits of h; exact in binary, so positions
/// are identical everywhere.
double Jitter(std::uint32_t h) {
    return (static_cast<double>(h & 0xFFFFu) / 65536.0 - 0.5) * 0.7;
}

/// v to two decimals, so that the samples print short; also hides the last-bit differences
/// of the platforms' exp, sin and cos.
double Hundredths(double v) {
    return std::round(v * 100.0) / 100.0;
}

/// A bump of the given height and radius centred on (cx, cy).
double Bump(double x, double y, double cx, double cy, double height, double radius) {
    const double dx = x - cx;
    const double dy = y - cy;
    return height * std::exp(-(dx * dx + dy * dy) / (2.0 * radius * radius));
}

/// Two hills, a ridge, a basin, gentle waves and a tilt.
double Height(double x, double y) {
    return Bump(x, y, 95.0, 110.0, 60.0, 42.0) + Bump(x, y, 215.0, 205.0, 38.0, 30.0) +
           Bump(x, y, 160.0, 160.0, 18.0, 20.0) - Bump(x, y, 200.0, 70.0, 24.0, 38.0) +
           5.0 * std::sin(x / 23.0) * std::cos(y / 31.0) + 0.04 * x;
}

} // namespace

std::vector<SFVec3f> SampleTerrain() {
    std::vector<SFVec3f> samples;
    samples.reserve(kSide * kSide);
    for (int row = 0; row < kSide; ++row) {
        for (int column = 0; column < kSide; ++column) {
            const std::uint32_t h =
                Hash(static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(column));
            const double x = Hundredths((column + 0.5 + Jitter(h)) * kSpacing);
            const double y = Hundredths((row + 0.5 + Jitter(h >> 16)) * kSpacing);
            samples.emplace_back(x, y, Hundredths(Height(x, y)));
        }
    }
    return samples;
}

} // namespace zq::tool
