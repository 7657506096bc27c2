// The Delaunay subdivision: counts, exact record order, an independent empty-circumcircle
// oracle, vertex bookkeeping, shallow copies and large inputs.
#include "c2subdivision.h"
#include "c2triangulation.h"

#include <gtest/gtest.h>

#include <atomic>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <thread>
#include <utility>
#include <vector>

// Threads started in this process are counted by a pthread_create of the test's own, which the
// library's calls reach first (glibc). Sanitizer runtimes put their own in the same place.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZQ_TEST_SANITIZED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZQ_TEST_SANITIZED 1
#endif
#if defined(__linux__) && defined(__GLIBC__) && !defined(ZQ_TEST_SANITIZED)
#define ZQ_TEST_COUNTS_THREADS 1
#include <dlfcn.h>
#include <pthread.h>

namespace {
std::atomic<int> g_threadsStarted{0};
} // namespace

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*start)(void*), void* argument) noexcept {
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto real = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    ++g_threadsStarted;
    return real(thread, attributes, start, argument);
}
#endif

namespace {

// Counter-clockwise in x-z.
const SFVec3f kA(-10.0, 0.0, -10.0);
const SFVec3f kB(10.0, 0.0, -10.0);
const SFVec3f kC(0.0, 0.0, 10.0);

using Triangle = std::array<std::size_t, 3>;

/// The samples triangulated in the triangle kA, kB, kC scaled by scale.
C2Subdivision Build(std::vector<SFVec3f> points, double scale = 1.0) {
    return C2Subdivision(&points, kA * scale, kB * scale, kC * scale);
}

/// Origin and destination of record i's primal edge, as vertex indices.
std::pair<std::size_t, std::size_t> Ends(const C2Subdivision& s, std::size_t i) {
    C2Edge& e = (*s.GetEdgeAt(i))[0];
    std::size_t org = s.GetVertexCount(), dest = org;
    for (std::size_t v = 0; v < s.GetVertexCount(); ++v) {
        org = s.GetVertex(v) == e.Org() ? v : org;
        dest = s.GetVertex(v) == e.Dest() ? v : dest;
    }
    return {org, dest};
}

struct P {
    long double x, z;
};

P At(const C2Subdivision& s, std::size_t v) {
    return {s.GetVertex(v)->x, s.GetVertex(v)->z};
}

/// Twice the signed area of a, b, c in long double.
long double Area(P a, P b, P c) {
    return (b.x - a.x) * (c.z - a.z) - (b.z - a.z) * (c.x - a.x);
}

/// The oracle: every triangle is counter-clockwise, the triangles tile the enclosing triangle,
/// their number is Euler's, and no vertex lies inside a triangle's circumcircle beyond the
/// round-off of the determinant (long double, relative to its permanent).
void ExpectDelaunay(const C2Subdivision& s) {
    const std::vector<Triangle> triangles = s.GetTriangles(true);
    const std::size_t n = s.GetVertexCount();
    ASSERT_EQ(triangles.size(), 2 * n - 5);
    EXPECT_EQ(s.GetEdgeCount(), 3 * n - 6);
    long double total = 0;
    for (const Triangle& t : triangles) {
        const P a = At(s, t[0]), b = At(s, t[1]), c = At(s, t[2]);
        const long double area = Area(a, b, c);
        ASSERT_GT(area, 0) << t[0] << ' ' << t[1] << ' ' << t[2];
        total += area;
        for (std::size_t v = 0; v < n; ++v) {
            const P d = At(s, v);
            const long double ax = a.x - d.x, az = a.z - d.z, bx = b.x - d.x, bz = b.z - d.z;
            const long double cx = c.x - d.x, cz = c.z - d.z;
            const long double la = ax * ax + az * az, lb = bx * bx + bz * bz;
            const long double lc = cx * cx + cz * cz;
            const long double det =
                la * (bx * cz - cx * bz) + lb * (cx * az - ax * cz) + lc * (ax * bz - bx * az);
            const long double permanent = la * (std::fabs(bx * cz) + std::fabs(cx * bz)) +
                                          lb * (std::fabs(cx * az) + std::fabs(ax * cz)) +
                                          lc * (std::fabs(ax * bz) + std::fabs(bx * az));
            ASSERT_LE(det, 1e-12L * permanent) << "vertex " << v << " in a circumcircle";
        }
    }
    const long double outer = Area(At(s, 0), At(s, 1), At(s, 2));
    EXPECT_NEAR(static_cast<double>(total / outer), 1.0, 1e-12);
}

std::vector<SFVec3f> RandomSamples(std::size_t n, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-5.0, 5.0);
    std::vector<SFVec3f> points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = unit(random), z = unit(random);
        points.emplace_back(x, unit(random), z);
    }
    return points;
}

/// A side x side grid of unit spacing centred on the origin, its height the sample's number;
/// raster order, or every step-th row and column first, halving the step down to 1.
std::vector<SFVec3f> Grid(int side, bool coarseToFine) {
    std::vector<SFVec3f> points;
    std::set<std::pair<int, int>> placed;
    for (int step = coarseToFine ? 8 : 1; step >= 1; step /= 2) {
        for (int r = 0; r < side; r += step) {
            for (int c = 0; c < side; c += step) {
                if (placed.insert({r, c}).second) {
                    points.emplace_back(c - side / 2.0, points.size(), r - side / 2.0);
                }
            }
        }
    }
    return points;
}

/// FNV-1a over the edge list in order (each record's end points as vertex indices and the
/// boundary marks of its four edges), then over every vertex's coordinate bits.
std::uint64_t Digest(const C2Subdivision& s) {
    std::uint64_t h = 0xcbf29ce484222325ull;
    const auto mix = [&h](std::uint64_t v) {
        for (int k = 0; k < 8; ++k) {
            h = (h ^ ((v >> (8 * k)) & 0xFF)) * 0x100000001b3ull;
        }
    };
    std::map<const SFVec3f*, std::size_t> index;
    for (std::size_t v = 0; v < s.GetVertexCount(); ++v) {
        index.emplace(s.GetVertex(v), v);
    }
    for (std::size_t i = 0; i < s.GetEdgeCount(); ++i) {
        C2QuadEdge& q = *s.GetEdgeAt(i);
        mix(index.at(q[0].Org()));
        mix(index.at(q[0].Dest()));
        for (short k = 0; k < 4; ++k) {
            mix(q[k].IsBoundaryEdge() ? 1 : 0);
        }
    }
    for (std::size_t v = 0; v < s.GetVertexCount(); ++v) {
        for (const double c : {s.GetVertex(v)->x, s.GetVertex(v)->y, s.GetVertex(v)->z}) {
            std::uint64_t bits = 0;
            std::memcpy(&bits, &c, sizeof bits);
            mix(bits);
        }
    }
    return h;
}

/// n samples uniform in [-5, 5) squared from a generator of the test's own (splitmix64), so
/// that every platform sees the same bits.
std::vector<SFVec3f> SplitMixSamples(std::size_t n) {
    std::uint64_t state = 20261123u;
    const auto next = [&state] {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return -5.0 + 10.0 * static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
    };
    std::vector<SFVec3f> points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = next(), z = next();
        points.emplace_back(x, double(i), z);
    }
    return points;
}

/// A grid with sites on its edges' lines, near them, and near its vertices: on-edge sites,
/// near-duplicates that are dropped (closer than 1e-5) and near ones that are kept.
std::vector<SFVec3f> OnEdgeAndNearDuplicates() {
    std::vector<SFVec3f> points = Grid(9, false);
    const std::size_t grid = points.size();
    for (std::size_t i = 0; i + 1 < grid; i += 3) {
        const SFVec3f& p = points[i];
        const SFVec3f& q = points[i + 1];
        points.emplace_back((p.x + q.x) / 2, 1.0, (p.z + q.z) / 2); // on a grid edge
        points.emplace_back(p.x + 0.25, 2.0, p.z + 0.25 + 5e-7);    // near a diagonal
        points.emplace_back(p.x + 4e-6, 3.0, p.z - 3e-6);           // a duplicate
        points.emplace_back(p.x - 2e-5, 4.0, p.z);                  // kept
    }
    return points;
}

} // namespace

TEST(SubdivisionCounts, PlainDuplicateAndOnEdgeInsertions) {
    EXPECT_EQ(Build({}).NumEdges(), 3);
    EXPECT_EQ(Build({{0, 0, 0}}).NumEdges(), 6);
    // A second site inside a new triangle adds three; swaps keep the count.
    EXPECT_EQ(Build({{0, 0, 0}, {1, 0, -8}}).NumEdges(), 9);
    // Within 1e-5 in x-z of a corner or an earlier site: dropped whatever its height.
    const C2Subdivision dup = Build({{0, 1, 0}, {0, 2, 5e-6}, {-10 + 4e-6, 0, -10}});
    EXPECT_EQ(dup.NumEdges(), 6);
    EXPECT_EQ(dup.GetVertexCount(), 4u);
    EXPECT_EQ(dup.GetVertex(3)->y, 1.0);
    // A site on an edge removes it and adds four: three more in all.
    EXPECT_EQ(Build({{0, 0, -5}, {-5, 0, -7.5}}).NumEdges(), 9);
    EXPECT_EQ(Build({{0, 0, -5}, {-5, 0, -7.5 + 5e-7}}).NumEdges(), 9);
}

TEST(SubdivisionOrder, RecordsInCreationOrderWithTheirEnds) {
    C2Subdivision s = Build({{0, 0, -5}});
    const std::vector<std::pair<std::size_t, std::size_t>> ends = {{0, 1}, {1, 2}, {2, 0},
                                                                   {0, 3}, {1, 3}, {2, 3}};
    for (std::size_t i = 0; i < ends.size(); ++i) {
        EXPECT_EQ(Ends(s, i), ends[i]) << i;
    }
    // Only the primal edges of the outer records are marked, and Connect passes the mark on to
    // the interior edges made from a marked edge.
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ((*s.GetEdgeAt(i))[0].IsBoundaryEdge(), i != 3) << i;
        EXPECT_FALSE((*s.GetEdgeAt(i))[2].IsBoundaryEdge()) << i;
    }
}

TEST(SubdivisionOrder, OnEdgeSiteReplacesEdgeAndKeepsOrder) {
    // (-5, -7.5) lies on the edge from corner a to the first site: that record goes, the others
    // keep their order and four new records follow.
    C2Subdivision s = Build({{0, 0, -5}, {-5, 0, -7.5}});
    ASSERT_EQ(s.GetEdgeCount(), 9u);
    const std::vector<std::pair<std::size_t, std::size_t>> kept = {
        {0, 1}, {1, 2}, {2, 0}, {1, 3}, {2, 3}};
    for (std::size_t i = 0; i < kept.size(); ++i) {
        EXPECT_EQ(Ends(s, i), kept[i]) << i;
    }
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_NE(Ends(s, i), std::make_pair(std::size_t(0), std::size_t(3))) << i;
    }
    ExpectDelaunay(s);
}

TEST(SubdivisionOracle, RandomAndGridInputsAreDelaunay) {
    ExpectDelaunay(Build(RandomSamples(600, 7u), 10.0));
    ExpectDelaunay(Build(Grid(17, false), 10.0));
    ExpectDelaunay(Build(Grid(17, true), 10.0));
}

TEST(SubdivisionVertices, EverySampleOnceWithItsOwnHeight) {
    const std::vector<SFVec3f> points = RandomSamples(300, 11u);
    const C2Subdivision s = Build(points, 10.0);
    ASSERT_EQ(s.GetVertexCount(), points.size() + 3);
    EXPECT_EQ(*s.GetVertex(0), kA * 10.0);
    EXPECT_EQ(*s.GetVertex(2), kC * 10.0);
    std::vector<int> uses(s.GetVertexCount());
    for (const Triangle& t : s.GetTriangles(false)) {
        for (std::size_t v : t) {
            ASSERT_GE(v, 3u);
            ++uses[v];
        }
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(*s.GetVertex(i + 3), points[i]);
        EXPECT_NE(s.GetVertex(i + 3), &points[i]);
        EXPECT_GT(uses[i + 3], 0) << i;
    }
    EXPECT_EQ(s.GetVertex(s.GetVertexCount()), nullptr);
    EXPECT_EQ(s.GetEdgeAt(s.GetEdgeCount()), nullptr);
}

TEST(SubdivisionCopies, ShareRecordsListAndPoints) {
    C2Subdivision s = Build(RandomSamples(20, 3u), 10.0);
    const C2Subdivision copy(s);
    C2Subdivision assigned = Build({});
    assigned = s;
    EXPECT_EQ(copy.GetEdgeAt(5), s.GetEdgeAt(5));
    EXPECT_EQ(assigned.GetVertex(7), s.GetVertex(7));
    // A removal through one is seen by all, in order.
    C2QuadEdge* sixth = s.GetEdgeAt(6);
    C2QuadEdge* fifth = s.GetEdgeAt(5);
    const std::size_t n = s.GetEdgeCount();
    assigned.DeleteEdge(fifth);
    EXPECT_EQ(copy.GetEdgeCount(), n - 1);
    EXPECT_EQ(s.GetEdgeAt(5), sixth);
}

TEST(SubdivisionEdgeList, AddAndDeleteKeepOrderAndOwnership) {
    C2Subdivision s = Build({{0, 0, 0}});
    C2QuadEdge* third = s.GetEdge(3);
    EXPECT_EQ(s.AddEdge(new C2QuadEdge()), 7);
    C2QuadEdge stranger;
    s.DeleteEdge(&stranger); // not in the list: nothing happens
    EXPECT_EQ(s.NumEdges(), 7);
    s.DeleteEdge(s.GetEdge(2));
    EXPECT_EQ(s.GetEdge(2), third);
    s.DeleteEdge(s.GetEdge(5)); // the added record: destroyed with delete
    C2Subdivision* slot = &s;
    C2Edge* e = C2QuadEdge::MakeEdge(nullptr, &slot);
    EXPECT_EQ(s.GetEdge(5), e->Qedge());
    EXPECT_EQ(s.GetEdge(-1), nullptr);
    // Another subdivision's record leaves the list but stays its owner's: its slot is not
    // reused for the next record made here.
    const C2Subdivision other = Build({});
    C2QuadEdge* borrowed = other.GetEdge(0);
    SFVec3f* const org = (*borrowed)[0].Org();
    s.AddEdge(borrowed);
    s.DeleteEdge(borrowed);
    C2Edge* fresh = C2QuadEdge::MakeEdge(nullptr, &slot);
    EXPECT_NE(fresh->Qedge(), borrowed);
    EXPECT_EQ((*borrowed)[0].Org(), org);
    EXPECT_EQ(other.GetEdge(0), borrowed);
    // Last appended to a third list, the record is still found in this one, from the front.
    C2Subdivision another = Build({});
    s.AddEdge(borrowed);
    another.AddEdge(borrowed);
    const short n = s.NumEdges();
    s.DeleteEdge(borrowed);
    EXPECT_EQ(s.NumEdges(), n - 1);
    // A null entry counts like any other; a record listed twice leaves from its first place
    // (and is freed once, at the end).
    C2QuadEdge* twice = new C2QuadEdge();
    C2QuadEdge* between = new C2QuadEdge();
    EXPECT_EQ(s.AddEdge(nullptr), n);
    s.AddEdge(twice);
    s.AddEdge(between);
    s.AddEdge(twice);
    EXPECT_EQ(s.GetEdge(n - 1), nullptr);
    s.DeleteEdge(twice);
    EXPECT_TRUE(s.GetEdge(n) == between && s.GetEdge(n + 1) == twice);
    s.DeleteEdge(nullptr);
    EXPECT_TRUE(s.GetEdge(n - 1) == between && s.NumEdges() == n + 1);
}

TEST(SubdivisionLifetime, DestructorForgetsTheRememberedSubdivision) {
    auto s = std::make_unique<C2Subdivision>(nullptr, kA, kB, kC);
    s.reset();
    // Connect now registers nowhere: the record is the caller's (under ASan a dangling
    // subdivision would be a use after free).
    C2Subdivision* none = nullptr;
    C2Edge* a = C2QuadEdge::MakeEdge(nullptr, &none);
    C2Edge* b = C2QuadEdge::MakeEdge(nullptr, &none);
    C2Edge* e = C2Edge::Connect(a, b);
    for (C2Edge* x : {a, b, e}) {
        delete x->Qedge();
    }
}

TEST(SubdivisionLarge, MoreThan32767SitesAndEdges) {
    const C2Subdivision s = Build(Grid(190, false), 40.0); // 36100 sites, 108k records
    const std::size_t n = 36100 + 3;
    ASSERT_EQ(s.GetVertexCount(), n);
    EXPECT_EQ(s.GetEdgeCount(), 3 * n - 6);
    EXPECT_EQ(s.NumEdges(), static_cast<short>((3 * n - 6) & 0xFFFF));
    EXPECT_EQ(s.GetTriangles(true).size(), 2 * n - 5);
    EXPECT_EQ(s.GetEdge(100), s.GetEdgeAt(100));
}

TEST(SubdivisionRecords, SameRecordsAsEver) {
    // Recorded from the constructor as it first shipped: records, their order, ends and marks,
    // and the vertices must never change.
    EXPECT_EQ(Digest(Build(SplitMixSamples(400), 10.0)), 0xB210FBBF7FD40D98ull);
    EXPECT_EQ(Digest(Build(Grid(20, false), 10.0)), 0x744926CAA8F3327Dull);
    EXPECT_EQ(Digest(Build(Grid(20, true), 10.0)), 0x658C8151B09807D0ull);
    const C2Subdivision nearby = Build(OnEdgeAndNearDuplicates(), 10.0);
    EXPECT_EQ(nearby.GetVertexCount(), 3 + 81 + 27 * 3); // one of four extra sites dropped
    EXPECT_EQ(Digest(nearby), 0x9B325CEA4CB4895Cull);
}

TEST(SubdivisionThreads, NoThreadStartsUnlessAsked) {
#if defined(ZQ_TEST_COUNTS_THREADS)
    // The count sees a thread that the standard library starts.
    const int before = g_threadsStarted;
    std::thread([] {}).join();
    ASSERT_EQ(g_threadsStarted, before + 1);
    // Enough records for chunks of a megabyte and more.
    std::vector<SFVec3f> points = SplitMixSamples(5000);
    const C2Subdivision s(&points, kA * 10.0, kB * 10.0, kC * 10.0);
    EXPECT_EQ(s.GetVertexCount(), points.size() + 3);
    EXPECT_EQ(g_threadsStarted, before + 1);
    // Build and the flat triangulation stay on the caller's thread unless asked for more.
    EXPECT_EQ(C2Subdivision::Build(points, {}).kept, points.size());
    EXPECT_EQ(C2Triangulation(points).GetKept(), points.size());
    EXPECT_EQ(g_threadsStarted, before + 1);
    C2SubdivisionOptions two;
    two.threads = 2;
    EXPECT_EQ(C2Subdivision::Build(points, two).kept, points.size());
    EXPECT_GT(g_threadsStarted, before + 1);
#else
    GTEST_SKIP() << "threads are counted only on glibc without sanitizers";
#endif
}
