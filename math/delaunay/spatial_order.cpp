// Spatial order: rounds of a randomized insertion order, each sorted along a Hilbert curve.
#include "delaunay/spatial_order.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zq::detail {

namespace {

/// Cells per side of the Hilbert grid: 2^16, far finer than any walk needs.
constexpr int kHilbertLevels = 16;
/// Rounds smaller than this are merged into the first one: tiny rounds gain nothing.
constexpr std::size_t kSmallestRound = 64;

/// The distance along the Hilbert curve of the cell (x, y), both below 2^kHilbertLevels.
std::uint32_t HilbertIndex(std::uint32_t x, std::uint32_t y) {
    std::uint32_t d = 0;
    for (std::uint32_t half = 1u << (kHilbertLevels - 1); half > 0; half >>= 1) {
        const std::uint32_t right = (x & half) != 0 ? 1 : 0;
        const std::uint32_t up = (y & half) != 0 ? 1 : 0;
        // Quadrants are visited lower left, upper left, upper right, lower right.
        d += half * half * ((3 * right) ^ up);
        if (up == 0) {
            // The lower quadrants hold the curve turned a quarter, mirrored on the right.
            if (right == 1) {
                x = half - 1 - (x & (half - 1));
                y = half - 1 - (y & (half - 1));
            }
            std::swap(x, y);
        }
        x &= half - 1;
        y &= half - 1;
    }
    return d;
}

/// A well-mixed 64-bit hash of i (splitmix's finalizer constants).
std::uint64_t Mix(std::uint64_t i) {
    i += 0x9E3779B97F4A7C15ull;
    i = (i ^ (i >> 30)) * 0xBF58476D1CE4E5B9ull;
    i = (i ^ (i >> 27)) * 0x94D049BB133111EBull;
    return i ^ (i >> 31);
}

/// The round of position i among n, counted from the last: half the sites go to round 0, a
/// quarter to round 1..., and those past the last round big enough to matter to that one.
std::uint64_t RoundFromLast(std::size_t i, std::uint64_t lastRound) {
    std::uint64_t h = Mix(i);
    std::uint64_t round = 0;
    while ((h & 1) != 0 && round < lastRound) {
        h >>= 1;
        ++round;
    }
    return round;
}

/// Scales v from [low, low + width] to a grid coordinate.
std::uint32_t Cell(double v, double low, double scale) {
    const double c = std::floor((v - low) * scale);
    const double top = double((1u << kHilbertLevels) - 1);
    return static_cast<std::uint32_t>(std::min(std::max(c, 0.0), top));
}

} // namespace

std::vector<std::size_t> InsertionOrder(const std::vector<Site>& sites) {
    const std::size_t n = sites.size();
    if (n == 0) {
        return {};
    }
    double minX = sites[0].x, maxX = minX, minY = sites[0].y, maxY = minY;
    for (const Site& s : sites) {
        minX = std::min(minX, s.x);
        maxX = std::max(maxX, s.x);
        minY = std::min(minY, s.y);
        maxY = std::max(maxY, s.y);
    }
    const double width = std::max(maxX - minX, maxY - minY);
    const double scale = width > 0.0 ? double(1u << kHilbertLevels) / width : 0.0;
    std::uint64_t lastRound = 0;
    while ((n >> (lastRound + 1)) >= kSmallestRound) {
        ++lastRound;
    }
    // The key is the round (first rounds first) above the curve index.
    std::vector<std::pair<std::uint64_t, std::size_t>> keyed(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint64_t round = lastRound - RoundFromLast(i, lastRound);
        const std::uint32_t h =
            HilbertIndex(Cell(sites[i].x, minX, scale), Cell(sites[i].y, minY, scale));
        keyed[i] = {(round << 32) | h, i};
    }
    std::sort(keyed.begin(), keyed.end());
    std::vector<std::size_t> order(n);
    for (std::size_t i = 0; i < n; ++i) {
        order[i] = keyed[i].second;
    }
    return order;
}

} // namespace zq::detail
