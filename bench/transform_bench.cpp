// zqmath's hot paths: matrix products and inversion, point transforms, quaternion and Euler
// conversions, vector normalisation and bounding boxes. Each benchmark is named task/zqmath; the
// peers' files time the same tasks on the same data under their own names.
#include "bench_data.h"
#include "c3rregion.h"
#include "call_floor.h"
#include "cquat.h"
#include "sfmatrix.h"
#include "sfvec4f.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

void Multiply(benchmark::State& state) {
    const SFMatrix a = bench::Affine(0.3), b = bench::Affine(1.1);
    SFMatrix product;
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        product.Multiply(a, b);
        benchmark::DoNotOptimize(&product);
    }
}

void Invert(benchmark::State& state) {
    const SFMatrix a = bench::Affine(0.3);
    for (auto _ : state) {
        SFMatrix inverse(a);
        benchmark::DoNotOptimize(&inverse);
        inverse.Invert();
        benchmark::DoNotOptimize(&inverse);
    }
}

void UntransformPoint(benchmark::State& state) {
    const SFMatrix a = bench::Affine(0.3);
    const SFVec3f p(1.0, 2.0, 3.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        benchmark::DoNotOptimize(a.UntransformPoint(p));
    }
}

void TransformPoints(benchmark::State& state) {
    const SFMatrix a = bench::Affine(0.3);
    const std::vector<SFVec3f> src = bench::Cloud(bench::kCloudSize);
    std::vector<SFVec3f> dst(src.size());
    for (auto _ : state) {
        a.TransformPoints(src.data(), dst.data(), static_cast<unsigned long>(src.size()));
        benchmark::DoNotOptimize(dst.data());
    }
}

/// The floor under TransformPoints: copying the same arrays, reading as many bytes and writing
/// as many.
void CopyPoints(benchmark::State& state) {
    const std::vector<SFVec3f> src = bench::Cloud(bench::kCloudSize);
    std::vector<SFVec3f> dst(src.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(src.data());
        std::copy(src.begin(), src.end(), dst.begin());
        benchmark::DoNotOptimize(dst.data());
    }
}

void Normalize(benchmark::State& state) {
    const std::vector<SFVec3f> src = bench::Cloud(bench::kCloudSize);
    std::vector<SFVec3f> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = src[i].Normalize();
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

/// The floor under Normalize: a call into a shared library per element that does nothing. The
/// peers' loops are inlined; zqmath's members stay out of line, so that a caller's compiler
/// cannot fuse their arithmetic.
void CallPerElement(benchmark::State& state) {
    const std::vector<SFVec3f> src = bench::Cloud(bench::kCloudSize);
    std::vector<SFVec3f> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = bench::Unchanged(src[i]);
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

void ExtendTo(benchmark::State& state) {
    const std::vector<SFVec3f> cloud = bench::Cloud(bench::kCloudSize);
    for (auto _ : state) {
        C3RRegion box(cloud[0], cloud[0]);
        for (const SFVec3f& p : cloud) {
            box.ExtendTo(p);
        }
        benchmark::DoNotOptimize(box);
    }
}

void Slerp(benchmark::State& state) {
    const CQuat a(SFVec3f(1.0, 2.0, 3.0), 0.4), b(SFVec3f(-2.0, 0.5, 1.0), 2.1);
    double t = 0.0;
    for (auto _ : state) {
        t = t < 1.0 ? t + 0.001 : 0.0;
        benchmark::DoNotOptimize(a.Slerp(b, t));
    }
}

void EulerToMatrix(benchmark::State& state) {
    const SFVec4f angles(0.3, -1.2, 2.5, 0.0);
    SFMatrix m;
    for (auto _ : state) {
        benchmark::DoNotOptimize(&angles);
        angles.Eul_ToSFMatrix(angles, m);
        benchmark::DoNotOptimize(&m);
    }
}

void EulerFromMatrix(benchmark::State& state) {
    SFMatrix m;
    const SFVec4f angles(0.3, -1.2, 2.5, 0.0);
    angles.Eul_ToSFMatrix(angles, m);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&m);
        benchmark::DoNotOptimize(angles.Eul_FromSFMatrix(m, 0));
    }
}

} // namespace

BENCHMARK(Multiply)->Name("Multiply/zqmath");
BENCHMARK(Invert)->Name("Invert/zqmath");
BENCHMARK(UntransformPoint)->Name("UntransformPoint/zqmath");
BENCHMARK(TransformPoints)->Name("TransformPoints_1M/zqmath")->Unit(benchmark::kMillisecond);
BENCHMARK(CopyPoints)->Name("TransformPoints_1M/copy")->Unit(benchmark::kMillisecond);
BENCHMARK(Normalize)->Name("Normalize_1M/zqmath")->Unit(benchmark::kMillisecond);
BENCHMARK(CallPerElement)->Name("Normalize_1M/call_floor")->Unit(benchmark::kMillisecond);
BENCHMARK(ExtendTo)->Name("ExtendTo_1M/zqmath")->Unit(benchmark::kMillisecond);
BENCHMARK(Slerp)->Name("Slerp/zqmath");
BENCHMARK(EulerToMatrix)->Name("EulerToMatrix/zqmath");
BENCHMARK(EulerFromMatrix)->Name("EulerFromMatrix/zqmath");

BENCHMARK_MAIN();
