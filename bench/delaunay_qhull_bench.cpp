// Qhull (the reentrant library) triangulating the samples of delaunay_bench.cpp's comparison row
// (x-z as Qhull's x-y); Qhull chooses its own insertion order.
#include "bench_data.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <vector>

extern "C" {
#include <libqhull_r/qhull_ra.h>
}

namespace {

void AnyOrder(benchmark::State& state) {
    std::vector<coordT> coordinates;
    for (const SFVec3f& p : bench::UniformSamples(bench::kSiteCount)) {
        coordinates.push_back(p.x);
        coordinates.push_back(p.z);
    }
    const int count = static_cast<int>(coordinates.size() / 2);
    char options[] = "qhull d Qt Qbb Qz";
    for (auto _ : state) {
        qhT qh;
        qh_zero(&qh, stderr);
        if (qh_new_qhull(&qh, 2, count, coordinates.data(), False, options, nullptr, stderr) != 0) {
            state.SkipWithError("qhull failed");
        }
        benchmark::DoNotOptimize(qh.num_facets);
        qh_freeqhull(&qh, !qh_ALL);
        int currentLong = 0, totalLong = 0;
        qh_memfreeshort(&qh, &currentLong, &totalLong);
    }
}

} // namespace

BENCHMARK(AnyOrder)->Name("Delaunay_100k_any_order/qhull")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
