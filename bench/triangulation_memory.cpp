// Peak memory of each way to triangulate n uniform samples, beyond the samples themselves:
// `triangulation_memory WAY N`, WAY one of flat, build, build2 (two threads) and constructor.
// Linux only: the peak is read from /proc after resetting it once the samples are made.
#include "bench_data.h"
#include "c2subdivision.h"
#include "c2triangulation.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

/// A field of /proc/self/status in bytes, such as "VmHWM" (the peak) or "VmRSS".
double StatusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, field.size() + 1, field + ":") == 0) {
            return 1024.0 * std::atof(line.c_str() + field.size() + 1);
        }
    }
    return 0.0;
}

/// Triangulates samples one way; returns the number of triangles.
std::size_t Triangulate(const std::string& way, std::vector<SFVec3f>& samples) {
    C2TriangulationOptions options;
    options.threads = way == "build2" ? 2 : 1;
    if (way == "flat") {
        return C2Triangulation(samples, options).GetTriangleCount();
    }
    if (way == "constructor") {
        const double w = std::sqrt(double(samples.size()));
        const C2Subdivision s(&samples, SFVec3f(-4 * w, 0, -4 * w), SFVec3f(6 * w, 0, -4 * w),
                              SFVec3f(w / 2, 0, 6 * w));
        return s.GetTriangles(false).size();
    }
    return C2Subdivision::Build(samples, options).subdivision.GetEdgeCount();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: triangulation_memory flat|build|build2|constructor N\n");
        return 2;
    }
    const std::string way = argv[1];
    const std::size_t n = std::strtoull(argv[2], nullptr, 10);
    std::vector<SFVec3f> samples = bench::UniformSamples(n);
    const double before = StatusBytes("VmRSS");
    // Writing 5 resets the peak to the present size.
    std::ofstream("/proc/self/clear_refs") << "5";
    const auto start = std::chrono::steady_clock::now();
    const std::size_t made = Triangulate(way, samples);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    const double peak = StatusBytes("VmHWM") - before;
    std::printf(
        "%s %zu samples: %.3f s, %zu made, peak beyond the samples %.0f MB, %.1f B/sample\n",
        way.c_str(), n, took.count(), made, peak / 1e6, peak / double(n));
    return 0;
}
