// bench_data.h: the inputs every library is timed on, so that each row of the comparison is the
// same work.
#ifndef ZQMATH_BENCH_DATA_H
#define ZQMATH_BENCH_DATA_H

#include "sfmatrix.h"
#include "sfvec3f.h"

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace bench {

/// Points in the transform and bounding-box rows.
constexpr std::size_t kCloudSize = 1000000;
/// Samples in the triangulation rows.
constexpr std::size_t kSiteCount = 100000;
/// Samples in the large-terrain triangulation row.
constexpr std::size_t kLargeSiteCount = 1000000;

/// n uniform random samples in [0, sqrt n) squared in x-z; heights are the sample numbers.
inline std::vector<SFVec3f> UniformSamples(std::size_t n) {
    std::mt19937_64 random(42u);
    const double width = std::sqrt(static_cast<double>(n));
    std::uniform_real_distribution<double> coordinate(0.0, width);
    std::vector<SFVec3f> points;
    points.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double x = coordinate(random);
        points.emplace_back(x, static_cast<double>(i), coordinate(random));
    }
    return points;
}

/// The side x side grid nearest n samples, unit spacing from the origin in x-z, heights the
/// sample numbers: in raster order, or coarse to fine (every 8th row and column first, then
/// every 4th, and so on).
inline std::vector<SFVec3f> Grid(std::size_t n, bool coarseToFine) {
    const std::size_t side = static_cast<std::size_t>(std::lround(std::sqrt(double(n))));
    std::vector<bool> placed(side * side);
    std::vector<SFVec3f> points;
    points.reserve(side * side);
    for (std::size_t step = coarseToFine ? 8 : 1; step >= 1; step /= 2) {
        for (std::size_t r = 0; r < side; r += step) {
            for (std::size_t c = 0; c < side; c += step) {
                if (!placed[r * side + c]) {
                    placed[r * side + c] = true;
                    points.emplace_back(double(c), double(points.size()), double(r));
                }
            }
        }
    }
    return points;
}

/// n random points in [-100, 100) cubed.
inline std::vector<SFVec3f> Cloud(std::size_t n) {
    std::mt19937_64 random(7u);
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    std::vector<SFVec3f> points;
    points.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double x = coordinate(random);
        const double y = coordinate(random);
        points.emplace_back(x, y, coordinate(random));
    }
    return points;
}

/// An affine transform (rotation, scale, translation), row vectors on the left: column 3 is
/// (0, 0, 0, 1), so every transformed point has w exactly 1.
inline SFMatrix Affine(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return SFMatrix(2 * c, 2 * s, 0.0, 0.0, -s, c, 0.5, 0.0, 0.25, -0.5, 1.5, 0.0, 3.0, -4.0, 5.0,
                    1.0);
}

} // namespace bench

#endif
