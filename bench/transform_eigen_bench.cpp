// Eigen on the tasks of transform_bench.cpp, same data, named task/eigen. zqmath's row-vector
// matrix M becomes Eigen's column-vector M^T (the same numbers read column by column), so that
// both compute p·M.
#include "bench_data.h"

#include <Eigen/Dense>
#include <Eigen/Geometry>
#include <benchmark/benchmark.h>

#include <vector>

namespace {

/// The same transform as bench::Affine, for column vectors.
Eigen::Matrix4d Affine(double angle) {
    const SFMatrix m = bench::Affine(angle);
    return Eigen::Map<const Eigen::Matrix4d>(&m[0]);
}

std::vector<Eigen::Vector3d> Cloud() {
    std::vector<Eigen::Vector3d> points;
    for (const SFVec3f& p : bench::Cloud(bench::kCloudSize)) {
        points.emplace_back(p.x, p.y, p.z);
    }
    return points;
}

void Multiply(benchmark::State& state) {
    const Eigen::Matrix4d a = Affine(0.3), b = Affine(1.1);
    Eigen::Matrix4d product;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        product.noalias() = a * b;
        benchmark::DoNotOptimize(product.data());
    }
}

void Invert(benchmark::State& state) {
    const Eigen::Matrix4d a = Affine(0.3);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        Eigen::Matrix4d inverse = a.inverse();
        benchmark::DoNotOptimize(inverse.data());
    }
}

void UntransformPoint(benchmark::State& state) {
    const Eigen::Matrix4d a = Affine(0.3);
    const Eigen::Vector4d p(1.0, 2.0, 3.0, 1.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        Eigen::Vector3d q = (a.inverse() * p).head<3>();
        benchmark::DoNotOptimize(q.data());
    }
}

void TransformPoints(benchmark::State& state) {
    const Eigen::Matrix4d a = Affine(0.3);
    const std::vector<Eigen::Vector3d> src = Cloud();
    std::vector<Eigen::Vector3d> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = (a * src[i].homogeneous()).head<3>();
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

void Normalize(benchmark::State& state) {
    const std::vector<Eigen::Vector3d> src = Cloud();
    std::vector<Eigen::Vector3d> dst(src.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < src.size(); ++i) {
            dst[i] = src[i].normalized();
        }
        benchmark::DoNotOptimize(dst.data());
    }
}

void ExtendTo(benchmark::State& state) {
    const std::vector<Eigen::Vector3d> cloud = Cloud();
    for (auto _ : state) {
        Eigen::AlignedBox3d box(cloud[0], cloud[0]);
        for (const Eigen::Vector3d& p : cloud) {
            box.extend(p);
        }
        benchmark::DoNotOptimize(box.min().data());
    }
}

void Slerp(benchmark::State& state) {
    const Eigen::Quaternionf a(Eigen::AngleAxisf(0.4f, Eigen::Vector3f(1, 2, 3).normalized()));
    const Eigen::Quaternionf b(Eigen::AngleAxisf(2.1f, Eigen::Vector3f(-2, 0.5, 1).normalized()));
    float t = 0.0f;
    for (auto _ : state) {
        t = t < 1.0f ? t + 0.001f : 0.0f;
        Eigen::Quaternionf q = a.slerp(t, b);
        benchmark::DoNotOptimize(q.coeffs().data());
    }
}

/// The rotation x about X, then y about Y, then z about Z.
Eigen::Matrix3d EulerMatrix(double x, double y, double z) {
    return (Eigen::AngleAxisd(x, Eigen::Vector3d::UnitX()) *
            Eigen::AngleAxisd(y, Eigen::Vector3d::UnitY()) *
            Eigen::AngleAxisd(z, Eigen::Vector3d::UnitZ()))
        .toRotationMatrix();
}

void EulerToMatrix(benchmark::State& state) {
    Eigen::Vector3d angles(0.3, -1.2, 2.5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(angles.data());
        Eigen::Matrix3d m = EulerMatrix(angles.x(), angles.y(), angles.z());
        benchmark::DoNotOptimize(m.data());
    }
}

void EulerFromMatrix(benchmark::State& state) {
    const Eigen::Matrix3d m = EulerMatrix(0.3, -1.2, 2.5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(m.data());
        Eigen::Vector3d angles = m.eulerAngles(0, 1, 2);
        benchmark::DoNotOptimize(angles.data());
    }
}

} // namespace

BENCHMARK(Multiply)->Name("Multiply/eigen");
BENCHMARK(Invert)->Name("Invert/eigen");
BENCHMARK(UntransformPoint)->Name("UntransformPoint/eigen");
BENCHMARK(TransformPoints)->Name("TransformPoints_1M/eigen")->Unit(benchmark::kMillisecond);
BENCHMARK(Normalize)->Name("Normalize_1M/eigen")->Unit(benchmark::kMillisecond);
BENCHMARK(ExtendTo)->Name("ExtendTo_1M/eigen")->Unit(benchmark::kMillisecond);
BENCHMARK(Slerp)->Name("Slerp/eigen");
BENCHMARK(EulerToMatrix)->Name("EulerToMatrix/eigen");
BENCHMARK(EulerFromMatrix)->Name("EulerFromMatrix/eigen");

BENCHMARK_MAIN();
