// Triangulation speed in sites per second: uniform random samples in input order, and square
// grids in raster order and coarse to fine (every 8th row and column first, then every 4th...).
#include "bench_data.h"
#include "c2subdivision.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

using Samples = std::vector<SFVec3f>;

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

/// Triangulates points in a triangle well around [0, width) squared, once per iteration.
void Triangulate(benchmark::State& state, Samples points) {
    double width = 1.0;
    for (const SFVec3f& p : points) {
        width = std::fmax(width, std::fmax(p.x, p.z));
    }
    const SFVec3f a(-4 * width, 0, -4 * width), b(6 * width, 0, -4 * width);
    const SFVec3f c(width / 2, 0, 6 * width);
    for (auto _ : state) {
        C2Subdivision s(&points, a, b, c);
        benchmark::DoNotOptimize(s.GetEdgeCount());
    }
    state.counters["sites/s"] = benchmark::Counter(static_cast<double>(points.size()),
                                                   benchmark::Counter::kIsIterationInvariantRate);
}

void UniformInputOrder(benchmark::State& state) {
    Triangulate(state, bench::UniformSamples(static_cast<std::size_t>(state.range(0))));
}

/// The comparison's row: bench::kSiteCount uniform samples in input order.
void InputOrder(benchmark::State& state) {
    Triangulate(state, bench::UniformSamples(bench::kSiteCount));
}

void GridRasterOrder(benchmark::State& state) {
    Triangulate(state, Grid(static_cast<std::size_t>(state.range(0)), false));
}

void GridCoarseToFine(benchmark::State& state) {
    Triangulate(state, Grid(static_cast<std::size_t>(state.range(0)), true));
}

} // namespace

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

BENCHMARK(InputOrder)->Name("Delaunay_100k_input_order/zqmath")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
