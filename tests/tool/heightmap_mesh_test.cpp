// The mesher's parts against brute force, and its guarantee checked by rasterising its output.
#include "../../tools/mesh/candidate_queue.h"
#include "../../tools/mesh/heightmap_mesher.h"
#include "../../tools/mesh/triangle_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

namespace {

using namespace zq::tool;

Raster Map(std::size_t width, std::size_t height, std::uint32_t maximum,
           std::uint16_t (*value)(std::size_t x, std::size_t y, std::uint32_t maximum)) {
    Raster r;
    r.width = width;
    r.height = height;
    r.maximum = maximum;
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            r.pixels.push_back(value(x, y, maximum));
        }
    }
    return r;
}

std::uint16_t Noise(std::size_t x, std::size_t y, std::uint32_t maximum) {
    std::uint32_t h = static_cast<std::uint32_t>(x * 73856093u ^ y * 19349663u);
    h ^= h >> 13;
    h *= 0x5bd1e995u;
    h ^= h >> 15;
    return static_cast<std::uint16_t>(h % (maximum + 1));
}

/// Twice the signed area of a, b, p.
double Orient(double ax, double ay, double bx, double by, double px, double py) {
    return (bx - ax) * (py - ay) - (by - ay) * (px - ax);
}

/// Each pixel's distance from the mesh through the triangles that hold its centre
/// (barycentric, in doubles; the largest where several do), -1 where none does.
std::vector<double> RasterisedErrors(const Raster& map, const Mesh& mesh) {
    std::vector<double> error(map.pixels.size(), -1.0);
    for (const auto& t : mesh.triangles) {
        const SFVec3f& a = mesh.vertices[t[0]];
        const SFVec3f& b = mesh.vertices[t[1]];
        const SFVec3f& c = mesh.vertices[t[2]];
        const double area = Orient(a.x, a.z, b.x, b.z, c.x, c.z);
        for (std::size_t y = 0; y < map.height; ++y) {
            for (std::size_t x = 0; x < map.width; ++x) {
                const double wa = Orient(b.x, b.z, c.x, c.z, x, y) / area;
                const double wb = Orient(c.x, c.z, a.x, a.z, x, y) / area;
                const double wc = Orient(a.x, a.z, b.x, b.z, x, y) / area;
                if (wa < -1e-12 || wb < -1e-12 || wc < -1e-12) {
                    continue;
                }
                const double height = wa * a.y + wb * b.y + wc * c.y;
                double& e = error[y * map.width + x];
                e = std::max(e, std::fabs(height - map.At(x, y)));
            }
        }
    }
    return error;
}

TEST(TriangleScan, FindsTheWorstPixelOfTheClosedTriangle) {
    const Raster map = Map(23, 19, 65535, Noise);
    std::mt19937 random(7);
    std::uniform_int_distribution<std::uint32_t> pixel(0, 23 * 19 - 1);
    for (int i = 0; i < 300; ++i) {
        const std::array<std::uint32_t, 3> corners{pixel(random), pixel(random), pixel(random)};
        Mesh mesh;
        for (std::uint32_t p : corners) {
            mesh.vertices.emplace_back(p % 23, map.pixels[p], p / 23);
        }
        mesh.triangles = {{0, 1, 2}};
        const Candidate found = ScanTriangle(map, corners);
        const std::vector<double> errors = RasterisedErrors(map, mesh);
        const double brute = *std::max_element(errors.begin(), errors.end());
        if (brute < 0.0) { // no area: nothing to scan
            EXPECT_EQ(found.error, 0.0);
            continue;
        }
        EXPECT_NEAR(found.error, brute, 1e-9 * brute) << i;
        EXPECT_NEAR(errors[found.pixel], brute, 1e-9 * brute) << i;
    }
}

TEST(CandidateQueue, TopIsTheLargestKeyThroughChangesAndRemovals) {
    CandidateQueue queue;
    std::map<std::uint32_t, float> model;
    std::mt19937 random(3);
    for (int i = 0; i < 5000; ++i) {
        const std::uint32_t item = random() % 200;
        if (random() % 3 == 0) {
            queue.Remove(item);
            model.erase(item);
        } else {
            const float key = static_cast<float>(random() % 1000);
            queue.Set(item, key);
            model[item] = key;
        }
        ASSERT_EQ(queue.Empty(), model.empty());
        if (!model.empty()) {
            const auto top = std::max_element(model.begin(), model.end(),
                                              [](auto& a, auto& b) { return a.second < b.second; });
            ASSERT_EQ(model[queue.Top()], top->second) << i;
        }
    }
}

std::uint16_t Flat(std::size_t, std::size_t, std::uint32_t) {
    return 1234;
}
std::uint16_t Spike(std::size_t x, std::size_t y, std::uint32_t maximum) {
    return x == 13 && y == 9 ? static_cast<std::uint16_t>(maximum) : 0;
}
std::uint16_t Steps(std::size_t x, std::size_t y, std::uint32_t maximum) {
    return static_cast<std::uint16_t>((x / 5 + y / 7) * 37 % (maximum + 1));
}

/// Every pixel of every map lies within the error of the mesh, which covers them all, and
/// the error reported is the largest found by rasterising the mesh independently.
TEST(MeshHeightmap, ReportsTheTrueLargestErrorWithinTheLimit) {
    const struct {
        const char* name;
        Raster map;
    } maps[] = {{"flat", Map(30, 20, 65535, Flat)},     {"spike", Map(31, 21, 65535, Spike)},
                {"steps", Map(33, 25, 255, Steps)},     {"noise8", Map(29, 23, 255, Noise)},
                {"noise16", Map(27, 26, 65535, Noise)}, {"1xN", Map(1, 37, 65535, Noise)},
                {"Nx1", Map(41, 1, 255, Noise)},        {"1x1", Map(1, 1, 255, Spike)}};
    for (const auto& m : maps) {
        for (const double error : {0.3, 0.01, 0.001}) {
            MeshLimits limits;
            limits.error = error;
            const HeightmapMesh result = MeshHeightmap(m.map, limits);
            for (const SFVec3f& v : result.mesh.vertices) {
                ASSERT_EQ(v.y, m.map.At(std::min<std::size_t>(v.x, m.map.width - 1),
                                        std::min<std::size_t>(v.z, m.map.height - 1)));
            }
            const std::vector<double> errors = RasterisedErrors(m.map, result.mesh);
            ASSERT_GE(*std::min_element(errors.begin(), errors.end()), 0.0) << m.name;
            const double largest = *std::max_element(errors.begin(), errors.end());
            const double full = m.map.maximum;
            EXPECT_LE(largest, error * full * (1 + 1e-12)) << m.name << " " << error;
            EXPECT_NEAR(result.largestError * full, largest, 1e-9 * full) << m.name;
            EXPECT_EQ(result.outline.size() >= 4, true) << m.name;
        }
    }
}

/// A budget stops the insertions; the error reported is still the true one.
TEST(MeshHeightmap, BudgetsAreKept) {
    const Raster map = Map(40, 30, 65535, Noise);
    for (const std::size_t budget : {2, 3, 10, 101}) {
        MeshLimits limits;
        limits.error = 1e-6;
        limits.triangles = budget;
        const HeightmapMesh byTriangles = MeshHeightmap(map, limits);
        EXPECT_LE(byTriangles.mesh.triangles.size(), budget);
        EXPECT_GE(byTriangles.mesh.triangles.size() + 2, budget);
        const std::vector<double> errors = RasterisedErrors(map, byTriangles.mesh);
        EXPECT_NEAR(byTriangles.largestError * 65535,
                    *std::max_element(errors.begin(), errors.end()), 1e-6);
        limits.triangles = std::numeric_limits<std::size_t>::max();
        limits.vertices = budget + 4;
        EXPECT_EQ(MeshHeightmap(map, limits).mesh.vertices.size(), budget + 4);
    }
}

} // namespace
