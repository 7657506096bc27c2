// sample_map.cpp: rational bumps and smoothed value noise, rounded to 16 bits.
#include "sample_map.h"

#include <algorithm>

namespace zq::tool {
namespace {

constexpr std::size_t kSide = 256;

/// A hill of the given height and radius centred on (cx, cy): 1 / (1 + r^2) falls smoothly.
double Hill(double x, double y, double cx, double cy, double height, double radius) {
    const double dx = (x - cx) / radius;
    const double dy = (y - cy) / radius;
    return height / (1.0 + dx * dx + dy * dy);
}

/// A value in [0, 1) for the lattice point (i, j).
double LatticeValue(std::uint32_t i, std::uint32_t j) {
    std::uint32_t h = i * 0x9E3779B1u ^ (j + 0x7F4A7C15u) * 0x85EBCA77u;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    return static_cast<double>(h & 0xFFFFu) / 65536.0;
}

/// Value noise on a lattice of the given spacing, smoothly interpolated.
double Noise(double x, double y, double spacing) {
    const double u = x / spacing;
    const double v = y / spacing;
    const auto i = static_cast<std::uint32_t>(u);
    const auto j = static_cast<std::uint32_t>(v);
    const double fu = u - i;
    const double fv = v - j;
    const double su = fu * fu * (3 - 2 * fu);
    const double sv = fv * fv * (3 - 2 * fv);
    const double top = LatticeValue(i, j) + su * (LatticeValue(i + 1, j) - LatticeValue(i, j));
    const double under =
        LatticeValue(i, j + 1) + su * (LatticeValue(i + 1, j + 1) - LatticeValue(i, j + 1));
    return top + sv * (under - top);
}

double Height(double x, double y) {
    double h = 0.08 + Hill(x, y, 70, 80, 0.55, 38) + Hill(x, y, 180, 60, 0.35, 30) +
               Hill(x, y, 150, 190, 0.45, 45) - Hill(x, y, 150, 190, 0.3, 12);
    // A ridge along the line x + y = 256.
    const double d = (x + y - 256) / 14;
    h += 0.2 / (1 + d * d);
    return h + 0.06 * Noise(x, y, 32) + 0.03 * Noise(x, y, 11) + 0.012 * Noise(x, y, 4);
}

} // namespace

Raster SampleMap() {
    Raster map;
    map.width = kSide;
    map.height = kSide;
    map.maximum = 65535;
    map.pixels.resize(kSide * kSide);
    for (std::size_t y = 0; y < kSide; ++y) {
        for (std::size_t x = 0; x < kSide; ++x) {
            const double h = std::clamp(Height(x, y), 0.0, 1.0);
            map.pixels[y * kSide + x] = static_cast<std::uint16_t>(h * 65535 + 0.5);
        }
    }
    return map;
}

} // namespace zq::tool
