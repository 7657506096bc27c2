// Spatial order: rounds of a randomized insertion order, each sorted along a Hilbert curve.
#include "delaunay/spatial_order.h"

#include "delaunay/uninitialized.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zq::detail {

namespace {

/// The most cells per side of the Hilbert grid: 2^14, so that the round and the curve index
/// fit the upper 32 bits of a sort key whose lower 32 hold the position.
constexpr int kMostLevels = 14;
/// Each round holds about this many times as many sites as the one before.
constexpr int kRoundRatioBits = 3;
/// Rounds smaller than this are merged into the first one: tiny rounds gain nothing.
constexpr std::size_t kSmallestRound = 64;
/// The widest digit of a sorting pass: 2048 buckets still stream well.
constexpr int kMostRadixBits = 11;

/// One step down the Hilbert curve, for each frame and each quadrant (x bit, y bit) of the
/// site: the quadrant's place along the curve (high two bits) and the frame below (low two).
/// A frame is a transform of the square, bit 0 exchanging x and y, bit 1 mirroring both; the
/// transforms commute and each is its own inverse, so composing them is an exclusive or.
constexpr std::array<std::uint8_t, 16> HilbertSteps() {
    std::array<std::uint8_t, 16> steps{};
    for (unsigned frame = 0; frame < 4; ++frame) {
        for (unsigned quadrant = 0; quadrant < 4; ++quadrant) {
            unsigned right = quadrant >> 1, up = quadrant & 1;
            if ((frame & 2) != 0) {
                right ^= 1;
                up ^= 1;
            }
            if ((frame & 1) != 0) {
                const unsigned x = right;
                right = up;
                up = x;
            }
            // Quadrants are visited lower left, upper left, upper right, lower right; the lower
            // ones hold the curve turned a quarter, the one on the right mirrored as well.
            const unsigned place = (3 * right) ^ up;
            const unsigned turn = up == 0 ? (right == 1 ? 3u : 1u) : 0u;
            steps[frame * 4 + quadrant] = static_cast<std::uint8_t>(place << 2 | (frame ^ turn));
        }
    }
    return steps;
}

constexpr std::array<std::uint8_t, 16> kHilbertSteps = HilbertSteps();

/// Levels that one look-up of kHilbertRuns descends.
constexpr int kRunLevels = 4;

/// kRunLevels steps down the curve at once, for each frame and each pair of kRunLevels-bit
/// pieces of x (high four bits of the entry's index) and y (low four): the places along the
/// curve (high bits) and the frame below (low two).
constexpr std::array<std::uint16_t, 4 * 256> HilbertRuns() {
    std::array<std::uint16_t, 4 * 256> runs{};
    for (unsigned frame = 0; frame < 4; ++frame) {
        for (unsigned xy = 0; xy < 256; ++xy) {
            unsigned f = frame, d = 0;
            for (int level = kRunLevels - 1; level >= 0; --level) {
                const unsigned quadrant = ((xy >> (4 + level)) & 1) << 1 | ((xy >> level) & 1);
                const unsigned step = kHilbertSteps[f * 4 + quadrant];
                d = d << 2 | step >> 2;
                f = step & 3;
            }
            runs[frame * 256 + xy] = static_cast<std::uint16_t>(d << 2 | f);
        }
    }
    return runs;
}

constexpr std::array<std::uint16_t, 4 * 256> kHilbertRuns = HilbertRuns();

/// The distance along the Hilbert curve of the cell (x, y), both below 2^levels: the top
/// levels one at a time, the rest kRunLevels at a time.
std::uint64_t HilbertIndex(std::uint32_t x, std::uint32_t y, int levels) {
    std::uint64_t d = 0;
    unsigned frame = 0;
    int level = levels - 1;
    for (; level >= 0 && (level + 1) % kRunLevels != 0; --level) {
        const unsigned quadrant = ((x >> level) & 1) << 1 | ((y >> level) & 1);
        const unsigned step = kHilbertSteps[frame * 4 + quadrant];
        d = d << 2 | step >> 2;
        frame = step & 3;
    }
    for (; level >= 0; level -= kRunLevels) {
        const int low = level + 1 - kRunLevels;
        const unsigned xy = ((x >> low) & 15) << 4 | ((y >> low) & 15);
        const unsigned run = kHilbertRuns[frame * 256 + xy];
        d = d << (2 * kRunLevels) | run >> 2;
        frame = run & 3;
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

/// The round of position i counted from the last: most sites go to round 0, the rest to
/// earlier rounds, each kRoundRatioBits of a hash more unlikely, up to lastRound.
std::uint64_t RoundFromLast(std::size_t i, std::uint64_t lastRound) {
    constexpr std::uint64_t kAllOnes = (1u << kRoundRatioBits) - 1;
    std::uint64_t h = Mix(i);
    std::uint64_t round = 0;
    while ((h & kAllOnes) == kAllOnes && round < lastRound) {
        h >>= kRoundRatioBits;
        ++round;
    }
    return round;
}

/// Scales v from low up to a grid coordinate below 2^levels.
std::uint32_t Cell(double v, double low, double scale, int levels) {
    const double c = std::floor((v - low) * scale);
    const double top = double((1u << levels) - 1);
    return static_cast<std::uint32_t>(std::min(std::max(c, 0.0), top));
}

/// Sorts keys stably by their bits [32, 32 + bits), in as few counting passes as digits of at
/// most kMostRadixBits allow: each pass reads and writes every key once.
void RadixSort(UninitializedVector<std::uint64_t>& keys, int bits) {
    UninitializedVector<std::uint64_t> other(keys.size());
    const int passes = (bits + kMostRadixBits - 1) / kMostRadixBits;
    const int digitBits = passes == 0 ? 0 : (bits + passes - 1) / passes;
    const std::uint64_t digit = (std::uint64_t(1) << digitBits) - 1;
    std::vector<std::size_t> start;
    for (int shift = 32; shift < 32 + bits; shift += digitBits) {
        start.assign(digit + 2, 0);
        for (std::uint64_t k : keys) {
            ++start[((k >> shift) & digit) + 1];
        }
        for (std::size_t b = 1; b < start.size(); ++b) {
            start[b] += start[b - 1];
        }
        for (std::uint64_t k : keys) {
            other[start[(k >> shift) & digit]++] = k;
        }
        keys.swap(other);
    }
}

} // namespace

std::vector<std::uint32_t> InsertionOrder(const std::vector<Site>& sites) {
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
    // About one site per cell: a finer grid orders nothing more.
    int levels = 1;
    while (levels < kMostLevels && (std::size_t(1) << (2 * levels)) < n) {
        ++levels;
    }
    const double width = std::max(maxX - minX, maxY - minY);
    const double scale = width > 0.0 ? double(1u << levels) / width : 0.0;
    std::uint64_t lastRound = 0;
    while ((n >> (kRoundRatioBits * (lastRound + 1))) >= kSmallestRound) {
        ++lastRound;
    }
    // The key is the round (first rounds first) above the curve index, above the position.
    UninitializedVector<std::uint64_t> keys(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint64_t round = lastRound - RoundFromLast(i, lastRound);
        const std::uint64_t h = HilbertIndex(Cell(sites[i].x, minX, scale, levels),
                                             Cell(sites[i].y, minY, scale, levels), levels);
        keys[i] = ((round << (2 * levels)) | h) << 32 | i;
    }
    int roundBits = 0;
    while ((lastRound >> roundBits) != 0) {
        ++roundBits;
    }
    RadixSort(keys, 2 * levels + roundBits);
    std::vector<std::uint32_t> order;
    ReserveLarge(order, n);
    for (std::size_t i = 0; i < n; ++i) {
        order.push_back(static_cast<std::uint32_t>(keys[i]));
    }
    return order;
}

} // namespace zq::detail
