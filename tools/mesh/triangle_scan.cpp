// triangle_scan.cpp: rows between the edges, and the plane stepped along each row in integers.
#include "triangle_scan.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace zq::tool {
namespace {

struct Corner {
    std::int64_t x;
    std::int64_t y;
    std::int64_t v;
};

/// n / d rounded down, for d > 0, |n| < 2^32 and d < 2^16: the double quotient is then never
/// rounded across a whole number, and a division of doubles is much faster than of integers.
std::int64_t FloorDivide(std::int64_t n, std::int64_t d) {
    return static_cast<std::int64_t>(std::floor(static_cast<double>(n) / static_cast<double>(d)));
}

/// Narrows [left, right] on row y to the side of edge a -> b where the triangle lies; side is
/// the sign of the triangle's area. Points p inside satisfy
/// side * ((b.x - a.x) (p.y - a.y) - (b.y - a.y) (p.x - a.x)) >= 0.
void ClipRow(const Corner& a, const Corner& b, std::int64_t side, std::int64_t y,
             std::int64_t& left, std::int64_t& right) {
    const std::int64_t k = side * (b.y - a.y);
    const std::int64_t m = side * (b.x - a.x) * (y - a.y);
    if (k > 0) {
        right = std::min(right, a.x + FloorDivide(m, k));
    } else if (k < 0) {
        left = std::max(left, a.x - FloorDivide(m, -k));
    }
}

} // namespace

Candidate ScanTriangle(const Raster& raster, const std::array<std::uint32_t, 3>& corners) {
    const std::uint32_t width = static_cast<std::uint32_t>(raster.width);
    Corner c[3];
    for (int i = 0; i < 3; ++i) {
        c[i] = {corners[i] % width, corners[i] / width, raster.pixels[corners[i]]};
    }
    // The plane's normal n; a pixel (x, y) of value v is (n.z (v - v0) + n.x (x - x0) +
    // n.y (y - y0)) / n.z above the plane: integers up to 2^50 for 65535-pixel sides.
    const Corner e1{c[1].x - c[0].x, c[1].y - c[0].y, c[1].v - c[0].v};
    const Corner e2{c[2].x - c[0].x, c[2].y - c[0].y, c[2].v - c[0].v};
    const std::int64_t nx = e1.y * e2.v - e1.v * e2.y;
    const std::int64_t ny = e1.v * e2.x - e1.x * e2.v;
    const std::int64_t nz = e1.x * e2.y - e1.y * e2.x;
    Candidate best{corners[0], 0.0};
    if (nz == 0) {
        return best;
    }
    const std::int64_t side = nz > 0 ? 1 : -1;
    const std::int64_t top = std::min({c[0].y, c[1].y, c[2].y});
    const std::int64_t bottom = std::max({c[0].y, c[1].y, c[2].y});
    std::int64_t largest = 0;
    for (std::int64_t y = top; y <= bottom; ++y) {
        std::int64_t left = std::numeric_limits<std::int64_t>::min();
        std::int64_t right = std::numeric_limits<std::int64_t>::max();
        ClipRow(c[0], c[1], side, y, left, right);
        ClipRow(c[1], c[2], side, y, left, right);
        ClipRow(c[2], c[0], side, y, left, right);
        const std::uint16_t* row = &raster.pixels[static_cast<std::size_t>(y * width)];
        std::int64_t offset = nx * (left - c[0].x) + ny * (y - c[0].y) - nz * c[0].v;
        for (std::int64_t x = left; x <= right; ++x, offset += nx) {
            const std::int64_t distance = std::llabs(offset + nz * row[x]);
            if (distance > largest) {
                largest = distance;
                best.pixel = static_cast<std::uint32_t>(y * width + x);
            }
        }
    }
    best.error = static_cast<double>(largest) / static_cast<double>(std::llabs(nz));
    return best;
}

} // namespace zq::tool
