// GLM on the tasks of transform_bench.cpp, same data, named task/glm. zqmath's row-vector matrix
// M becomes GLM's column-vector M^T (the same sixteen numbers, read column by column), so that
// both compute p·M.
#define GLM_ENABLE_EXPERIMENTAL
#include "bench_data.h"

#include <benchmark/benchmark.h>
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <glm/gtx/euler_angles.hpp>

#include <vector>

namespace {

/// The same transform as bench::Affine, for column vectors.
glm::dmat4 Affine(double angle) {
    const SFMatrix m = bench::Affine(angle);
    return glm::make_mat4(&m[0]);
}

std::vector<glm::dvec3> Cloud() {
    std::vector<glm::dvec3> points;
    for (const SFVec3f& p : bench::Cloud(bench::kCloudSize)) {
        points.emplace_back(p.x, p.y, p.z);
    }
    return points;
}

void Multiply(benchmark::State& state) {
    const glm::dmat4 a = Affine(0.3), b = Affine(1.1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        glm::dmat4 product = a * b;
        benchmark::DoNotOptimize(&product);
    }
}

void Invert(benchmark::State& state) {
    const glm::dmat4 a = Affine(0.3);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        glm::dmat4 inverse = glm::inverse(a);
        benchmark::DoNotOptimize(&inverse);
    }
}

void UntransformPoint(benchmark::State& state) {
    const glm::dmat4 a = Affine(0.3);
    const glm::dvec4 p(1.0, 2.0, 3.0, 1.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        glm::dvec3 q(glm::inverse(a) * p);
        benchmark::DoNotOptimize(&q);
    }
}

void TransformPoints(benchmark::State& state) {
    const glm::dmat4 a = Affine(0.3);
    const std::vector<glm::dvec3> src = Cloud();
    std::vector<glm::dvec3> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = glm::dvec3(a * glm::dvec4(src[i], 1.0));
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

void Normalize(benchmark::State& state) {
    const std::vector<glm::dvec3> src = Cloud();
    std::vector<glm::dvec3> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = glm::normalize(src[i]);
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

void ExtendTo(benchmark::State& state) {
    const std::vector<glm::dvec3> cloud = Cloud();
    for (auto _ : state) {
        glm::dvec3 low = cloud[0], high = cloud[0];
        for (const glm::dvec3& p : cloud) {
            low = glm::min(low, p);
            high = glm::max(high, p);
        }
        benchmark::DoNotOptimize(&low);
        benchmark::DoNotOptimize(&high);
    }
}

void Slerp(benchmark::State& state) {
    const glm::quat a = glm::angleAxis(0.4f, glm::normalize(glm::vec3(1, 2, 3)));
    const glm::quat b = glm::angleAxis(2.1f, glm::normalize(glm::vec3(-2, 0.5, 1)));
    float t = 0.0f;
    for (auto _ : state) {
        t = t < 1.0f ? t + 0.001f : 0.0f;
        glm::quat q = glm::slerp(a, b, t);
        benchmark::DoNotOptimize(&q);
    }
}

void EulerToMatrix(benchmark::State& state) {
    glm::dvec3 angles(0.3, -1.2, 2.5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&angles);
        glm::dmat4 m = glm::eulerAngleXYZ(angles.x, angles.y, angles.z);
        benchmark::DoNotOptimize(&m);
    }
}

void EulerFromMatrix(benchmark::State& state) {
    const glm::dmat4 m = glm::eulerAngleXYZ(0.3, -1.2, 2.5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&m);
        glm::dvec3 angles;
        glm::extractEulerAngleXYZ(m, angles.x, angles.y, angles.z);
        benchmark::DoNotOptimize(&angles);
    }
}

} // namespace

BENCHMARK(Multiply)->Name("Multiply/glm");
BENCHMARK(Invert)->Name("Invert/glm");
BENCHMARK(UntransformPoint)->Name("UntransformPoint/glm");
BENCHMARK(TransformPoints)->Name("TransformPoints_1M/glm")->Unit(benchmark::kMillisecond);
BENCHMARK(Normalize)->Name("Normalize_1M/glm")->Unit(benchmark::kMillisecond);
BENCHMARK(ExtendTo)->Name("ExtendTo_1M/glm")->Unit(benchmark::kMillisecond);
BENCHMARK(Slerp)->Name("Slerp/glm");
BENCHMARK(EulerToMatrix)->Name("EulerToMatrix/glm");
BENCHMARK(EulerFromMatrix)->Name("EulerFromMatrix/glm");

BENCHMARK_MAIN();
