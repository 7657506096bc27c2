// CGAL's Delaunay_triangulation_2 on the samples of delaunay_bench.cpp's comparison row (x-z as
// CGAL's x-y): inserted one by one in input order, starting each search at the face of the last
// vertex (the work C2Subdivision does), and as a range, which CGAL sorts spatially first (also
// on the large row's 10^6 samples).
#include "bench_data.h"

#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Triangulation = CGAL::Delaunay_triangulation_2<Kernel>;

std::vector<Kernel::Point_2> Sites(std::size_t n) {
    std::vector<Kernel::Point_2> sites;
    for (const SFVec3f& p : bench::UniformSamples(n)) {
        sites.emplace_back(p.x, p.z);
    }
    return sites;
}

void InputOrder(benchmark::State& state) {
    const std::vector<Kernel::Point_2> sites = Sites(bench::kSiteCount);
    for (auto _ : state) {
        Triangulation t;
        Triangulation::Face_handle hint;
        for (const Kernel::Point_2& p : sites) {
            hint = t.insert(p, hint)->face();
        }
        benchmark::DoNotOptimize(t.number_of_faces());
    }
}

void Range(benchmark::State& state, std::size_t n) {
    const std::vector<Kernel::Point_2> sites = Sites(n);
    for (auto _ : state) {
        Triangulation t;
        t.insert(sites.begin(), sites.end());
        benchmark::DoNotOptimize(t.number_of_faces());
    }
}

} // namespace

BENCHMARK(InputOrder)->Name("Delaunay_100k_input_order/cgal")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Range, 100k, bench::kSiteCount)
    ->Name("Delaunay_100k_any_order/cgal")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Range, 1M, bench::kLargeSiteCount)
    ->Name("Delaunay_1M_any_order/cgal")
    ->Unit(benchmark::kMillisecond);
// The same work again, beside zqmath's build with quad-edge records.
BENCHMARK_CAPTURE(Range, 1M_records, bench::kLargeSiteCount)
    ->Name("Delaunay_1M_with_records/cgal")
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
