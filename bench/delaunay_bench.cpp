// Triangulation speed in sites per second: uniform random samples in input order, and square
// grids in raster order and coarse to fine (every 8th row and column first, then every 4th...),
// through the constructor and through Build.
#include "bench_data.h"
#include "c2subdivision.h"
#include "c2triangulation.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
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

/// The constructor, in a triangle well around the samples; Build on one thread or two, which
/// derives its own; or the flat triangulation alone.
enum class Way { kConstructor, kBuild, kBuildTwoThreads, kFlat };

/// Triangulates points one way, once per iteration.
void Triangulate(benchmark::State& state, Samples points, Way way) {
    double width = 1.0;
    for (const SFVec3f& p : points) {
        width = std::fmax(width, std::fmax(p.x, p.z));
    }
    const SFVec3f a(-4 * width, 0, -4 * width), b(6 * width, 0, -4 * width);
    const SFVec3f c(width / 2, 0, 6 * width);
    C2TriangulationOptions options;
    options.threads = way == Way::kBuildTwoThreads ? 2 : 1;
    for (auto _ : state) {
        if (way == Way::kFlat) {
            benchmark::DoNotOptimize(C2Triangulation(points, options).GetTriangleCount());
        } else if (way != Way::kConstructor) {
            benchmark::DoNotOptimize(
                C2Subdivision::Build(points, options).subdivision.GetEdgeCount());
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
    Triangulate(state, bench::UniformSamples(Count(state)), Way::kConstructor);
}

/// The comparison's rows: uniform samples in input order, and through Build.
void InputOrder(benchmark::State& state) {
    Triangulate(state, bench::UniformSamples(bench::kSiteCount), Way::kConstructor);
}

void AnyOrder(benchmark::State& state, std::size_t n, Way way) {
    Triangulate(state, bench::UniformSamples(n), way);
}

void GridRasterOrder(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), false), Way::kConstructor);
}

void GridCoarseToFine(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), true), Way::kConstructor);
}

void BuildUniform(benchmark::State& state) {
    Triangulate(state, bench::UniformSamples(Count(state)), Way::kBuild);
}

void FlatUniform(benchmark::State& state) {
    Triangulate(state, bench::UniformSamples(Count(state)), Way::kFlat);
}

void BuildGridRaster(benchmark::State& state) {
    Triangulate(state, Grid(Count(state), false), Way::kBuild);
}

} // namespace

BENCHMARK(FlatUniform)->RangeMultiplier(10)->Range(100000, 10000000)->Unit(benchmark::kMillisecond);
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

BENCHMARK(InputOrder)->Name("Delaunay_100k_input_order/zqmath")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AnyOrder, 100k, bench::kSiteCount, Way::kFlat)
    ->Name("Delaunay_100k_any_order/zqmath")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AnyOrder, 1M, bench::kLargeSiteCount, Way::kFlat)
    ->Name("Delaunay_1M_any_order/zqmath")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AnyOrder, 1M_records, bench::kLargeSiteCount, Way::kBuild)
    ->Name("Delaunay_1M_with_records/zqmath")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AnyOrder, 1M_records_2t, bench::kLargeSiteCount, Way::kBuildTwoThreads)
    ->Name("Delaunay_1M_with_records/zqmath_2_threads")
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
