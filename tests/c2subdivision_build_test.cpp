// C2Subdivision::Build: predicates right where rounding flips the plain sign, the same triangles as
// the constructor in general position, exact Delaunay validity on degenerate inputs, the duplicate
// rule against a brute-force oracle, and the rejected samples and progress reports.
#include "c2subdivision.h"
#include "delaunay/robust_predicates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

using Triangle = std::array<std::size_t, 3>;
using Samples = std::vector<SFVec3f>;

/// A triangle as its vertex set, orientation and starting corner aside.
std::set<std::array<std::size_t, 3>> AsSets(std::vector<Triangle> triangles) {
    std::set<std::array<std::size_t, 3>> sets;
    for (Triangle& t : triangles) {
        std::sort(t.begin(), t.end());
        sets.insert(t);
    }
    return sets;
}

Samples Random(std::size_t n, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-50.0, 50.0);
    Samples points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = unit(random), z = unit(random);
        points.emplace_back(x, unit(random), z);
    }
    return points;
}

/// Vertex v in whole multiples of 1/unit, exactly: the oracle's arithmetic is then integer.
std::array<std::int64_t, 2> Lattice(const C2Subdivision& s, std::size_t v, double unit) {
    const double x = s.GetVertex(v)->x * unit, z = s.GetVertex(v)->z * unit;
    EXPECT_TRUE(x == std::floor(x) && z == std::floor(z) && std::fabs(x) < 8192 &&
                std::fabs(z) < 8192)
        << "vertex " << v << " is off the oracle's lattice";
    return {static_cast<std::int64_t>(x), static_cast<std::int64_t>(z)};
}

/// Exact validity: every face a triangle (Euler's counts), every triangle counter-clockwise,
/// and no vertex strictly inside a triangle's circumcircle, in integer arithmetic; coordinates
/// must be multiples of 1/unit below 8192/unit, so that no product overflows.
void ExpectExactDelaunay(const C2Subdivision& s, double unit) {
    const std::size_t n = s.GetVertexCount();
    const std::vector<Triangle> triangles = s.GetTriangles(true);
    ASSERT_EQ(triangles.size(), 2 * n - 5);
    ASSERT_EQ(s.GetEdgeCount(), 3 * n - 6);
    std::vector<std::array<std::int64_t, 2>> p(n);
    for (std::size_t v = 0; v < n; ++v) {
        p[v] = Lattice(s, v, unit);
    }
    for (const Triangle& t : triangles) {
        const auto a = p[t[0]], b = p[t[1]], c = p[t[2]];
        ASSERT_GT((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]), 0);
        for (std::size_t v = 0; v < n; ++v) {
            const std::int64_t ax = a[0] - p[v][0], az = a[1] - p[v][1];
            const std::int64_t bx = b[0] - p[v][0], bz = b[1] - p[v][1];
            const std::int64_t cx = c[0] - p[v][0], cz = c[1] - p[v][1];
            const std::int64_t det = (ax * ax + az * az) * (bx * cz - cx * bz) +
                                     (bx * bx + bz * bz) * (cx * az - ax * cz) +
                                     (cx * cx + cz * cz) * (ax * bz - bx * az);
            ASSERT_LE(det, 0) << "vertex " << v << " inside a circumcircle";
        }
    }
}

/// Every sample kept, in the caller's order with its height, and in some triangle.
void ExpectAllKept(const C2SubdivisionBuild& b, const Samples& samples) {
    EXPECT_EQ(b.kept, samples.size());
    EXPECT_EQ(b.duplicates + b.rejected, 0u);
    ASSERT_EQ(b.subdivision.GetVertexCount(), samples.size() + 3);
    std::vector<int> uses(samples.size() + 3);
    for (const Triangle& t : b.subdivision.GetTriangles(false)) {
        for (std::size_t v : t) {
            ++uses[v];
        }
    }
    for (std::size_t i = 0; i < samples.size(); ++i) {
        EXPECT_EQ(*b.subdivision.GetVertex(i + 3), samples[i]) << i;
        EXPECT_GT(uses[i + 3], 0) << i;
    }
}

/// The rule, by brute force: a sample goes when a corner or an earlier kept one is near.
std::vector<std::size_t> KeptByRule(const Samples& samples, const C2Subdivision& s) {
    std::vector<SFVec2f> kept = {s.GetVertex(0)->XZ(), s.GetVertex(1)->XZ(), s.GetVertex(2)->XZ()};
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const SFVec2f x = samples[i].XZ();
        if (std::none_of(kept.begin(), kept.end(),
                         [&](const SFVec2f& k) { return x.DistanceTo(k) < 1e-5; })) {
            kept.push_back(x);
            positions.push_back(i);
        }
    }
    return positions;
}

} // namespace

TEST(RobustPredicates, RightWhereRoundingFlipsTheSign) {
    using zq::detail::Site;
    const double ulp = std::ldexp(1.0, -53); // of values in [0.5, 1)
    for (int i = 0; i < 16; ++i) {
        for (int j = 0; j < 16; ++j) {
            // On the line y = x the orientation is 12 (py - px): the sign of j - i.
            const Site p{0.5 + i * ulp, 0.5 + j * ulp};
            EXPECT_EQ(zq::detail::Orientation(p, {12, 12}, {24, 24}), (j > i) - (j < i))
                << i << ' ' << j;
        }
    }
    const double step = std::ldexp(1.0, -50); // of values in [4, 8)
    for (int k = -8; k <= 8; ++k) {
        // (3, 4), (-4, 3), (-5, 0) lie on the circle of radius 5; (0, 5 + k step) is inside
        // for k < 0.
        const Site d{0, 5 + k * step}, e{5 + k * step, 0};
        EXPECT_EQ(zq::detail::InCircleSign({3, 4}, {-4, 3}, {-5, 0}, d), (k < 0) - (k > 0)) << k;
        EXPECT_EQ(zq::detail::InCircleSign({-3, -4}, {4, -3}, {0, 5}, e), (k < 0) - (k > 0)) << k;
    }
    // Exact differences whose products round: (1 + 2^-30)^2 - (1 + 2^-29) is 2^-60, though both
    // products round to the same double.
    const double e30 = std::ldexp(1.0, -30), e29 = std::ldexp(1.0, -29);
    EXPECT_EQ(zq::detail::Orientation({1 + e30, 1 + e29}, {1, 1 + e30}, {0, 0}), 1);
    EXPECT_EQ(zq::detail::Orientation({1, 1 + e30}, {1 + e30, 1 + e29}, {0, 0}), -1);
}

/// The quad-edge algebra on every directed edge, primal and dual: Onext and Oprev inverse, the
/// dual rings consistent with the primal ones, every face (the outer one too) a triangle whose
/// sides meet end to end. Returns the number of edges marked boundary.
int ExpectWellFormed(const C2Subdivision& s) {
    int boundary = 0;
    for (std::size_t r = 0; r < s.GetEdgeCount(); ++r) {
        C2QuadEdge& q = *s.GetEdgeAt(r);
        for (short k = 0; k < 4; ++k) {
            C2Edge* e = &q[k];
            EXPECT_EQ(e->Onext()->Oprev(), e) << r;
            EXPECT_EQ(e->Rot()->Onext()->Rot()->Onext(), e) << r;
            if (k % 2 == 1) {
                EXPECT_EQ(e->Org(), nullptr) << r;
                continue;
            }
            EXPECT_EQ(e->Onext()->Org(), e->Org()) << r;
            EXPECT_EQ(e->Lnext()->Org(), e->Dest()) << r;
            EXPECT_EQ(e->Lnext()->Lnext()->Lnext(), e) << r;
            boundary += e->IsBoundaryEdge() ? 1 : 0;
        }
    }
    return boundary;
}

TEST(SubdivisionBuild, SameTrianglesAsTheConstructorInGeneralPosition) {
    const SFVec3f a(-600, 0, -600), b(600, 0, -600), c(0, 0, 600);
    // The larger input, asked for two threads, makes and links its records on both.
    for (auto [n, seed] : {std::pair{500u, 1u}, std::pair{6000u, 2u}}) {
        Samples points = Random(n, seed);
        const C2Subdivision original(&points, a, b, c);
        C2SubdivisionOptions options;
        options.corners = std::array<SFVec3f, 3>{a, b, c};
        options.threads = n > 4096 ? 2 : 1;
        const C2SubdivisionBuild built = C2Subdivision::Build(points, options);
        ExpectAllKept(built, points);
        EXPECT_EQ(AsSets(built.subdivision.GetTriangles(true)),
                  AsSets(original.GetTriangles(true)));
        EXPECT_EQ(built.subdivision.GetEdgeCount(), original.GetEdgeCount());
        ExpectWellFormed(original);
        // Only the enclosing triangle's edges are marked.
        EXPECT_EQ(ExpectWellFormed(built.subdivision), 3);
    }
}

TEST(SubdivisionBuild, DegenerateInputsAreExactlyDelaunay) {
    std::vector<Samples> inputs(5);
    for (int r = 0; r < 15; ++r) { // a grid, every square's corners cocircular
        for (int c = 0; c < 15; ++c) {
            inputs[0].emplace_back(c, r * 15 + c, r);
        }
    }
    for (int i = 0; i < 60; ++i) { // a collinear run, out of order, then a point off it
        inputs[1].emplace_back((i * 37) % 60, i, (i * 37) % 60 * 0.5);
    }
    inputs[1].emplace_back(30, 0, 40);
    const int ring[][2] = {{0, 25}, {7, 24}, {15, 20}, {20, 15}, {24, 7}}; // radius 25
    for (const auto& q : ring) { // two concentric integer rings and their centre
        for (int sx : {-1, 1}) {
            for (int sz : {-1, 1}) {
                inputs[2].emplace_back(sx * q[0], 1, sz * q[1]);
                inputs[2].emplace_back(sz * q[1], 2, sx * q[0]);
                if (q[0] % 5 == 0 && q[1] % 5 == 0) { // radius 5
                    inputs[2].emplace_back(sx * q[0] / 5, 3, sz * q[1] / 5);
                }
            }
        }
    }
    inputs[2].emplace_back(0, 0, 0);
    inputs[2].emplace_back(3, 0, 4);
    inputs[2].emplace_back(-4, 0, 3);
    std::mt19937 random(5u);
    for (int i = 0; i < 120; ++i) { // a tight cluster on a 1/16 lattice among spread points
        const bool tight = i % 3 != 0;
        const int range = tight ? 24 : 32;
        const double step = tight ? 1.0 / 16 : 1.0;
        inputs[3].emplace_back(double(random() % range) * step, i, double(random() % range) * step);
    }
    for (int i = 0; i < 40; ++i) { // a grid with a diagonal through its points
        inputs[4].emplace_back(i % 8, i, i / 8);
        inputs[4].emplace_back(i * 0.25, -i, i * 0.25 + 0.5);
    }
    // The finest step of each input's sites; the corners are whole numbers, near enough for
    // the oracle's integer arithmetic.
    const double units[] = {2, 2, 1, 16, 8};
    C2SubdivisionOptions options;
    options.corners =
        std::array<SFVec3f, 3>{SFVec3f(-300, 0, -300), SFVec3f(300, 0, -300), SFVec3f(0, 0, 300)};
    for (std::size_t k = 0; k < inputs.size(); ++k) {
        SCOPED_TRACE(k);
        // The lattice inputs may repeat a site: keep one of each, first come.
        Samples unique;
        std::set<std::pair<double, double>> seen;
        for (const SFVec3f& p : inputs[k]) {
            if (seen.insert({p.x, p.z}).second) {
                unique.push_back(p);
            }
        }
        const C2SubdivisionBuild built = C2Subdivision::Build(unique, options);
        ExpectAllKept(built, unique);
        ExpectExactDelaunay(built.subdivision, units[k]);
    }
}

TEST(SubdivisionBuild, NearDuplicatesGoEarliestFirstAsTheRuleSays) {
    Samples points = Random(200, 9u);
    for (std::size_t i = 0; i < 40; ++i) {
        const SFVec3f p = points[i * 5];
        points.emplace_back(p.x, p.y + 1, p.z);          // the same site, another height
        points.emplace_back(p.x + 7e-6, p.y + 2, p.z);   // near
        points.emplace_back(p.x, p.y + 3, p.z - 9.9e-6); // near
        points.emplace_back(p.x + 2e-5, p.y + 4, p.z);   // not near
    }
    // A chain 6e-6 apart: the middle goes, so the third, 1.2e-5 from the first, stays.
    for (int i = 0; i < 3; ++i) {
        points.emplace_back(10 + 6e-6 * i, i, 10);
    }
    // A later sample near one that is itself dropped does not go for it.
    points.insert(points.begin() + 1, SFVec3f(points[0].x - 8e-6, 7, points[0].z));
    points.insert(points.begin() + 2, SFVec3f(points[0].x - 1.6e-5, 8, points[0].z));
    const C2SubdivisionBuild built = C2Subdivision::Build(points, {});
    const std::vector<std::size_t> expected = KeptByRule(points, built.subdivision);
    ASSERT_EQ(built.kept, expected.size());
    EXPECT_EQ(built.duplicates, points.size() - expected.size());
    EXPECT_EQ(built.subdivision.GetVertexCount(), expected.size() + 3);
    for (std::size_t k = 0; k < expected.size(); ++k) {
        EXPECT_EQ(*built.subdivision.GetVertex(k + 3), points[expected[k]]) << k;
    }
    const std::size_t n = built.subdivision.GetVertexCount();
    EXPECT_EQ(built.subdivision.GetTriangles(true).size(), 2 * n - 5);
    EXPECT_EQ(built.subdivision.GetEdgeCount(), 3 * n - 6);
}

TEST(SubdivisionBuild, RejectsUnusableSamplesAndReportsProgress) {
    Samples points;
    for (int i = 0; i < 260 * 260; ++i) {
        points.emplace_back(i % 260, i, i / 260);
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    points.emplace_back(nan, 0, 1);
    points.emplace_back(1, 0, std::numeric_limits<double>::infinity());
    points.emplace_back(1e31, 0, 1);
    points.emplace_back(1e-31, 0, 1);
    points.emplace_back(0, 0, 5000); // outside the caller's triangle
    points[0].y = nan;               // a height is carried, never tested: the sample stays
    C2SubdivisionOptions options;
    // Given clockwise: taken the other way round.
    options.corners = std::array<SFVec3f, 3>{SFVec3f(-1000, 0, -1000), SFVec3f(130, 0, 2000),
                                             SFVec3f(2000, 0, -1000)};
    std::vector<std::pair<std::size_t, std::size_t>> reports;
    options.progress = [&](std::size_t done, std::size_t total) {
        reports.emplace_back(done, total);
    };
    const C2SubdivisionBuild built = C2Subdivision::Build(points.data(), points.size(), options);
    EXPECT_EQ(built.rejected, 5u);
    EXPECT_EQ(built.kept, 260u * 260u);
    const std::vector<std::pair<std::size_t, std::size_t>> expected = {{65536, 67600},
                                                                       {67600, 67600}};
    EXPECT_EQ(reports, expected);
    const C2Subdivision& s = built.subdivision;
    EXPECT_TRUE(std::isnan(s.GetVertex(3)->y));
    EXPECT_EQ(s.GetTriangles(false).size(), 2u * 259 * 259);
    EXPECT_EQ(s.NumEdges(), static_cast<short>(s.GetEdgeCount() & 0xFFFF));
    EXPECT_EQ(s.GetEdge(7), s.GetEdgeAt(7));
    C2Edge& e = (*s.GetEdgeAt(0))[0];
    EXPECT_EQ(e.Lnext()->Lnext()->Lnext(), &e);
    EXPECT_EQ(e.Sym()->Sym(), &e);
    // Nothing usable: the bare enclosing triangle, well formed.
    const C2SubdivisionBuild none = C2Subdivision::Build(&points[260 * 260], 4, {});
    EXPECT_EQ(none.kept + none.duplicates, 0u);
    EXPECT_EQ(none.rejected, 4u);
    EXPECT_EQ(none.subdivision.GetEdgeCount(), 3u);
    EXPECT_EQ(none.subdivision.GetTriangles(true).size(), 1u);
    EXPECT_EQ(ExpectWellFormed(none.subdivision), 3);
}
