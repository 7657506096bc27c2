// Triangulation speed in sites per second: uniform random samples in input order, and square
// grids in raster order and coarse to fine (every 8th row and column first, then every 4th...),
// through the constructor and through Build.
#include "c2subdivision.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

/// Samples in [0, width) squared in x-z; heights are the sample numbers.
using Samples = std::vector<SFVec3f>;

Samples Uniform(std::size_t n) {
    std::mt19937_64 random(42u);
    const double width = std::sqrt(static_cast<double>(n));
    std::uniform_real_distribution<double> coordinate(0.0, width);
    Samples points;
    points.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double x = coordinate(random);
        points.emplace_back(x, static_cast<double>(i), coordinate(random));
    }
    return points;
}

/// The side x side grid, rows and columns that are multiples of each step in turn.
Samples Grid(std::size_t n, bool coarseToFine) {
    const std::size_t side = static_cast<std::size_t>(std::lround(std::sqrt(double(n))));
    std::vector<bool> placed(side * side);
    Samples points;
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

/// The constructor, in a triangle well around the samples, or Build, which derives its own.
enum class Way { kConstructor, kBuild };

/// Triangulates points one way, once per iteration.
void Triangulate(benchmark::State& state, Samples points, Way way) {
    double width = 1.0;
    for (const SFVec3f& p : points) {
        width = std::fmax(width, std::fmax(p.x, p.z));
    }
    const SFVec3f a(-4 * width, 0, -4 * width), b(6 * width, 0, -4 * width);
    const SFVec3f c(width / 2, 0, 6 * width);
    for (auto _ : state) {
        if (way == Way::kBuild) {
            benchmark::DoNotOptimize(C2Subdivision::Build(points, {}).subdivision.GetEdgeCount());
        } else {
            C2Subdivision s(&points, a, b, c);
            benchmark::DoNotOptimize(s.GetEdgeCount());
        }
    }
    state.counters["sites/s"] = benchmark::Counter(static_cast<double>(points.size()),
                                                   benchmark::Counter::kIsIterationInvariantRate);
}

std::size_t Count(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void UniformInputOrder(benchmark::State& state) {
    Triangulate(state, Uniform(Count(state)), Way::kConstructor);
}

void GridRasterOrder(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), false), Way::kConstructor);
}

void GridCoarseToFine(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), true), Way::kConstructor);
}

void BuildUniform(benchmark::State& state) {
    Triangulate(state, Uniform(Count(state)), Way::kBuild);
}

void BuildGridRaster(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), false), Way::kBuild);
}

} // namespace

BENCHMARK(BuildUniform)
    ->RangeMultiplier(10)
    ->Range(100000, 10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BuildGridRaster)
    ->RangeMultiplier(10)
    ->Range(100000, 10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(UniformInputOrder)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(GridRasterOrder)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(GridCoarseToFine)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
