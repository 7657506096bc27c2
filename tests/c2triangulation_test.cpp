// C2Triangulation: the same triangles as C2Subdivision::Build, exact Delaunay validity and the
// exact hull on degenerate inputs built at once and a sample at a time, what an insertion
// reports it changed, and the duplicate and rejection rules of Insert.
#include "c2subdivision.h"
#include "c2triangulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

using Samples = std::vector<SFVec3f>;
using Lattice = std::array<std::int64_t, 2>;
using Corners = std::array<SFVec3f, 3>;
constexpr std::uint32_t kNone = C2Triangulation::kNone;

/// Twice the signed area of a, b, c, exactly.
std::int64_t Cross(const Lattice& a, const Lattice& b, const Lattice& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

/// Positive when d lies strictly inside the circle of the counter-clockwise a, b, c, exactly.
std::int64_t InCircle(const Lattice& a, const Lattice& b, const Lattice& c, const Lattice& d) {
    const std::int64_t ax = a[0] - d[0], az = a[1] - d[1], bx = b[0] - d[0], bz = b[1] - d[1];
    const std::int64_t cx = c[0] - d[0], cz = c[1] - d[1];
    return (ax * ax + az * az) * (bx * cz - cx * bz) + (bx * bx + bz * bz) * (cx * az - ax * cz) +
           (cx * cx + cz * cz) * (ax * bz - bx * az);
}

/// The samples' sites, which must be whole numbers below 2^12 in magnitude.
std::vector<Lattice> OnLattice(const Samples& samples) {
    std::vector<Lattice> p;
    for (const SFVec3f& s : samples) {
        EXPECT_TRUE(s.x == std::floor(s.x) && s.z == std::floor(s.z) && std::fabs(s.x) < 4096 &&
                    std::fabs(s.z) < 4096);
        p.push_back({static_cast<std::int64_t>(s.x), static_cast<std::int64_t>(s.z)});
    }
    return p;
}

/// The samples on the boundary of their convex hull, collinear ones included, by brute force.
std::set<std::uint32_t> OnHull(const std::vector<Lattice>& p, const std::set<std::uint32_t>& in) {
    std::set<std::uint32_t> hull;
    for (std::uint32_t i : in) {
        for (std::uint32_t j : in) {
            bool edge = p[i] != p[j];
            for (std::uint32_t k : in) {
                edge = edge && Cross(p[i], p[j], p[k]) >= 0;
            }
            for (std::uint32_t k : in) {
                // On the supporting line between i and j: on the hull's boundary.
                const bool between = (p[k][0] - p[i][0]) * (p[k][0] - p[j][0]) <= 0 &&
                                     (p[k][1] - p[i][1]) * (p[k][1] - p[j][1]) <= 0;
                if (edge && Cross(p[i], p[j], p[k]) == 0 && between) {
                    hull.insert(k);
                }
            }
        }
    }
    return hull;
}

/// Twins paired both ways along the same edge, triangles counter-clockwise with no sample
/// strictly inside a circle, 1 + 2 n triangles, and the hull exactly the samples' own.
void ExpectExactDelaunay(const C2Triangulation& t, const Samples& samples) {
    const std::vector<Lattice> p = OnLattice(samples);
    const std::uint32_t* origin = t.GetOrigins();
    const std::uint32_t* twin = t.GetTwins();
    ASSERT_EQ(t.GetTriangleCount(), 1 + 2 * t.GetKept());
    std::set<std::uint32_t> kept;
    for (std::uint32_t v = 3; v < t.GetVertexCount(); ++v) {
        kept.insert(t.GetSample(v));
    }
    for (std::uint32_t h = 0; h < 3 * t.GetTriangleCount(); ++h) {
        const std::uint32_t next = h % 3 == 2 ? h - 2 : h + 1;
        if (twin[h] != kNone) {
            ASSERT_EQ(twin[twin[h]], h);
            ASSERT_EQ(origin[twin[h]], origin[next]);
        }
    }
    for (std::uint32_t i = 0; i < t.GetTriangleCount(); ++i) {
        if (t.HasCorner(i)) {
            continue;
        }
        const auto v = t.GetTriangle(i);
        const Lattice a = p[t.GetSample(v[0])], b = p[t.GetSample(v[1])], c = p[t.GetSample(v[2])];
        ASSERT_GT(Cross(a, b, c), 0) << "triangle " << i;
        for (std::uint32_t k : kept) {
            ASSERT_LE(InCircle(a, b, c, p[k]), 0) << "sample " << k << " in triangle " << i;
        }
    }
    std::set<std::uint32_t> outline;
    std::int64_t area = 0;
    const std::vector<std::uint32_t> hull = t.GetHull();
    for (std::size_t k = 0; k < hull.size(); ++k) {
        const Lattice& a = p[t.GetSample(hull[k])];
        const Lattice& b = p[t.GetSample(hull[(k + 1) % hull.size()])];
        area += a[0] * b[1] - a[1] * b[0];
        outline.insert(t.GetSample(hull[k]));
    }
    EXPECT_EQ(outline.size(), hull.size());
    EXPECT_EQ(outline, OnHull(p, kept));
    EXPECT_GT(area, 0);
}

/// The triangles as sets of sample numbers, a corner c as kNone - c.
std::set<std::array<std::uint32_t, 3>> AsSets(const std::vector<std::array<std::uint32_t, 3>>& ts) {
    std::set<std::array<std::uint32_t, 3>> sets;
    for (std::array<std::uint32_t, 3> t : ts) {
        std::sort(t.begin(), t.end());
        sets.insert(t);
    }
    return sets;
}

/// Degenerate inputs on the integer lattice: a grid (cocircular squares), a collinear run with
/// one point off it, concentric rings, a cluster with repeats, and random points.
std::vector<Samples> DegenerateInputs() {
    std::vector<Samples> inputs(5);
    for (int i = 0; i < 225; ++i) {
        inputs[0].emplace_back(i % 15, i, i / 15);
    }
    for (int i = 0; i < 60; ++i) {
        inputs[1].emplace_back((i * 37) % 60, i, (i * 37) % 60 / 2);
    }
    inputs[1].emplace_back(30, 0, 40);
    for (const auto& q : {std::array<int, 2>{0, 25}, {7, 24}, {15, 20}, {20, 15}, {24, 7}}) {
        for (int s : {-1, 1}) {
            inputs[2].emplace_back(s * q[0], 1, q[1]);
            inputs[2].emplace_back(q[1], 2, -s * q[0]);
            inputs[2].emplace_back(-s * q[0], 1, -q[1]);
            inputs[2].emplace_back(-q[1], 2, s * q[0]);
        }
    }
    inputs[2].emplace_back(0, 0, 0);
    std::mt19937 random(11u);
    for (int i = 0; i < 300; ++i) {
        inputs[3].emplace_back(double(random() % 12), i, double(random() % 12));
        inputs[4].emplace_back(double(random() % 2000) - 1000, i, double(random() % 2000) - 1000);
    }
    return inputs;
}

} // namespace

TEST(Triangulation, SameTrianglesAsBuildWithDuplicatesAndRejects) {
    std::mt19937 random(3u);
    std::uniform_real_distribution<double> unit(-50.0, 50.0);
    Samples points;
    for (int i = 0; i < 3000; ++i) {
        points.emplace_back(unit(random), i, unit(random));
        if (i % 50 == 0) {
            points.emplace_back(points.back().x + 4e-6, -i, points.back().z); // a near duplicate
            points.emplace_back(std::numeric_limits<double>::quiet_NaN(), 0, 0);
        }
    }
    const C2Triangulation flat(points);
    const C2SubdivisionBuild built = C2Subdivision::Build(points, {});
    EXPECT_EQ(flat.GetKept(), built.kept);
    EXPECT_EQ(flat.GetDuplicates(), built.duplicates);
    EXPECT_EQ(flat.GetRejected(), built.rejected);
    EXPECT_EQ(flat.GetDuplicates(), 60u);
    // Build's vertex 3 + k is the k-th kept sample in the caller's order.
    std::vector<std::uint32_t> kept(flat.GetSamples() + 3,
                                    flat.GetSamples() + flat.GetVertexCount());
    std::sort(kept.begin(), kept.end());
    std::vector<std::array<std::uint32_t, 3>> fromBuild;
    for (const auto& t : built.subdivision.GetTriangles(false)) {
        fromBuild.push_back({kept[t[0] - 3], kept[t[1] - 3], kept[t[2] - 3]});
    }
    EXPECT_EQ(AsSets(flat.GetSampleTriangles()), AsSets(fromBuild));
}

TEST(Triangulation, ExactlyDelaunayBuiltAtOnceAndOneSampleAtATime) {
    // Clockwise, and far enough for the hull: no corner sees past a lattice site.
    const Corners corners = {SFVec3f(-1e15, 0, -1e15), SFVec3f(0, 0, 1e15),
                             SFVec3f(1e15, 0, -1e15)};
    for (const Samples& samples : DegenerateInputs()) {
        SCOPED_TRACE(samples.size());
        const C2Triangulation atOnce(samples);
        ExpectExactDelaunay(atOnce, samples);
        C2Triangulation grown(corners);
        for (std::uint32_t i = 0; i < samples.size(); ++i) {
            grown.Insert(samples[i], i);
        }
        EXPECT_EQ(grown.GetKept(), atOnce.GetKept());
        EXPECT_EQ(grown.GetDuplicates(), atOnce.GetDuplicates());
        ExpectExactDelaunay(grown, samples);
    }
}

TEST(Triangulation, InsertReportsEveryTriangleItChanged) {
    const Samples samples = DegenerateInputs()[4];
    C2Triangulation t(
        Corners{SFVec3f(-5000, 0, -5000), SFVec3f(5000, 0, -5000), SFVec3f(0, 0, 5000)});
    t.Reserve(samples.size());
    const std::uint32_t* origins = t.GetOrigins();
    for (std::uint32_t i = 0; i < samples.size(); ++i) {
        std::vector<std::array<std::uint32_t, 3>> before;
        for (std::uint32_t k = 0; k < t.GetTriangleCount(); ++k) {
            before.push_back(t.GetTriangle(k));
        }
        std::vector<std::uint32_t> made = {kNone}; // appended to, not replaced
        const std::uint32_t v = t.Insert(samples[i], i, &made);
        ASSERT_EQ(v, t.GetVertexCount() - 1);
        ASSERT_EQ(made.front(), kNone);
        const std::set<std::uint32_t> reported(made.begin() + 1, made.end());
        EXPECT_EQ(reported.size(), made.size() - 1);
        for (std::uint32_t k = 0; k < t.GetTriangleCount(); ++k) {
            const auto now = t.GetTriangle(k);
            const bool changed = k >= before.size() || now != before[k];
            const bool hasNew = std::count(now.begin(), now.end(), v) == 1;
            ASSERT_EQ(reported.count(k) == 1, changed) << "triangle " << k << " at " << i;
            ASSERT_EQ(hasNew, changed) << "triangle " << k << " at " << i;
        }
    }
    EXPECT_EQ(t.GetOrigins(), origins); // the room reserved held every insertion
}

TEST(Triangulation, InsertDropsNearDuplicatesAndRejectsOutsiders) {
    C2Triangulation t(Corners{SFVec3f(-10, 0, -10), SFVec3f(10, 0, -10), SFVec3f(0, 0, 10)});
    EXPECT_EQ(t.Insert(SFVec3f(1, 0, 1), 0), 3u);
    EXPECT_EQ(t.Insert(SFVec3f(1 + 9e-6, 0, 1), 1), kNone);
    EXPECT_EQ(t.Insert(SFVec3f(1, 5, 1), 2), kNone); // the same site at another height
    EXPECT_EQ(t.Insert(SFVec3f(-10 + 5e-6, 0, -10 + 5e-6), 3), kNone); // near a corner
    EXPECT_EQ(t.Insert(SFVec3f(1 + 1.1e-5, 0, 1), 4), 4u);
    EXPECT_EQ(t.Insert(SFVec3f(0, 0, 10), 6), kNone);    // on a corner: outside, strictly
    EXPECT_EQ(t.Insert(SFVec3f(0, 0, -10), 7), kNone);   // on a side
    EXPECT_EQ(t.Insert(SFVec3f(1e31, 0, 0), 8), kNone);  // unusable
    EXPECT_EQ(t.Insert(SFVec3f(0, 0, 1e-31), 9), kNone); // unusable
    EXPECT_EQ(t.GetKept(), 2u);
    EXPECT_EQ(t.GetDuplicates(), 3u);
    EXPECT_EQ(t.GetRejected(), 4u);
    EXPECT_EQ(t.GetSample(4), 4u);
    EXPECT_EQ(t.GetSample(0), kNone);
    const C2Triangulation copy = t;
    t.Insert(SFVec3f(3, 0, 3), 10);
    EXPECT_EQ(copy.GetVertexCount(), 5u);
    EXPECT_EQ(t.GetVertexCount(), 6u);
    EXPECT_TRUE(copy.GetHull().empty());
    EXPECT_EQ(t.GetHull().size(), 3u);
    // A sample on an edge, 9e-6 from the apex of the sliver across it.
    for (double side : {1.0, -1.0}) {
        C2Triangulation sliver(Corners{SFVec3f(-1, 0, -1), SFVec3f(1, 0, -1), SFVec3f(0, 0, 1)});
        sliver.Insert(SFVec3f(0, 0, 0), 0);
        sliver.Insert(SFVec3f(2.2e-5, 0, 0), 1);
        sliver.Insert(SFVec3f(1.1e-5, 0, -side * 9e-6), 2);
        sliver.Insert(SFVec3f(1.1e-5, 0, side * 1e-3), 3); // the walk starts on this side
        EXPECT_EQ(sliver.Insert(SFVec3f(1.1e-5, 0, 0), 4), kNone) << side;
    }
    // Clusters at and above the duplicate distance's scale: a sample goes exactly when a corner
    // or a sample kept before it lies nearer than 1e-5, though that one need not be a corner of
    // the triangle the sample falls in; in the wider cluster most triangles are large enough
    // to hold the whole disk of 1e-5 about a sample. Lattices of power-of-two steps (a negative
    // width) put many samples exactly on edges, whose disks reach the triangles beyond.
    std::mt19937 random(4u);
    for (double width : {6e-5, 6e-4, -0x1p-17, -0x1p-16}) {
        std::uniform_real_distribution<double> around(1.0, 1.0 + std::fabs(width));
        std::uniform_int_distribution<int> step(0, 12);
        const auto coordinate = [&] {
            return width > 0 ? around(random) : 1.0 - width * step(random);
        };
        std::vector<SFVec2f> kept = {SFVec2f(-10, -10), SFVec2f(10, -10), SFVec2f(0, 10)};
        C2Triangulation cluster(
            Corners{SFVec3f(-10, 0, -10), SFVec3f(10, 0, -10), SFVec3f(0, 0, 10)});
        for (std::uint32_t i = 0; i < 400; ++i) {
            const double cx = coordinate();
            const SFVec2f x(cx, coordinate());
            const bool free = std::none_of(
                kept.begin(), kept.end(), [&](const SFVec2f& k) { return x.DistanceTo(k) < 1e-5; });
            ASSERT_EQ(cluster.Insert(SFVec3f(x.x, 0, x.y), i) != kNone, free) << i;
            kept.insert(kept.end(), free ? 1 : 0, x);
        }
        EXPECT_LT(cluster.GetKept(), 400u);
    }
}
