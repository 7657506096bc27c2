// The directed 3D segment.
#include <c3line.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

/// The distance from p to the segment [a, b] by ternary search on the convex distance along
/// it: an oracle independent of the projection formula.
double SegmentDistance(const SFVec3f& p, const SFVec3f& a, const SFVec3f& b) {
    const auto at = [&](double s) { return (p - (a + (b - a) * s)).Length(); };
    double lo = 0.0, hi = 1.0;
    for (int k = 0; k < 200; ++k) {
        const double m1 = lo + (hi - lo) / 3.0;
        const double m2 = hi - (hi - lo) / 3.0;
        if (at(m1) < at(m2)) {
            hi = m2;
        } else {
            lo = m1;
        }
    }
    return at(lo);
}

} // namespace

TEST(C3LineDistance, StartIsADisplacementAndClosestFormIsSquaredToTheLine) {
    std::mt19937 random(7u);
    std::uniform_real_distribution<double> u(-3.0, 3.0);
    for (int k = 0; k < 200; ++k) {
        const SFVec3f s(u(random), u(random), u(random));
        const SFVec3f f(u(random), u(random), u(random));
        const SFVec3f p(u(random), u(random), u(random));
        EXPECT_NEAR(C3Line(s, f).Distance(p), SegmentDistance(p, f, f + s), 1e-9);
    }
    const C3Line line(SFVec3f(0, 0, 0), SFVec3f(2, 0, 0));
    SFVec3f closest(-7, -7, -7);
    EXPECT_EQ(line.Distance(SFVec3f(1, 3, 0), closest), 9.0);
    EXPECT_EQ(line.Distance(SFVec3f(5, 3, 0), closest), 9.0); // beyond the finish: no clamping
    EXPECT_EQ(closest, SFVec3f(-7, -7, -7));
}

TEST(C3LineAngles, CosinesTripleProductAndAngleAtStart) {
    const C3Line x(SFVec3f(1, 1, 1), SFVec3f(3, 1, 1));
    const C3Line y(SFVec3f(0, 0, 0), SFVec3f(0, 2, 0));
    EXPECT_EQ(x.VertexAngle(C3Line(SFVec3f(0, 5, 0), SFVec3f(7, 5, 0))), 1.0);
    EXPECT_EQ(x.VertexAngle(C3Line(SFVec3f(0, 0, 0), SFVec3f(-1, 0, 0))), -1.0);
    EXPECT_EQ(x.VertexAngle(y), 0.0);
    EXPECT_EQ(C3Line(SFVec3f(0, 0, 0), SFVec3f(1, 1, 0)).PlaneAngle(x, y), 0.0);
    EXPECT_EQ(C3Line(SFVec3f(0, 0, 0), SFVec3f(0, 0, -3)).PlaneAngle(x, y), -12.0);
    EXPECT_DOUBLE_EQ(x.PointAngle(SFVec3f(2, 2, 1)), std::atan(1.0));
    EXPECT_EQ(x.PointAngle(x.Start()), 0.0);
}

// With tE = tL = 0 a boundary test passes exactly when its numerator is at most 0, so a
// segment is accepted exactly when its start lies in the volume, and then collapses onto it.
TEST(C3LineClip, AcceptsExactlyStartsInsideAndCollapsesOntoThem) {
    const double unread = std::numeric_limits<double>::quiet_NaN();
    std::mt19937 random(11u);
    std::uniform_real_distribution<double> u(-2.0, 2.0);
    for (int k = 0; k < 400; ++k) {
        const SFVec3f s(u(random), u(random), u(random) + 1.0);
        const SFVec3f f(u(random), u(random), u(random) + 1.0);
        const double zmin = u(random) * 0.5;
        const bool inside = std::fabs(s.x) <= s.z && std::fabs(s.y) <= s.z && s.z >= zmin;
        C3Line line(s, f);
        bool finishClipped = true, startClipped = true;
        ASSERT_EQ(line.ClipToViewVolume(zmin, unread, finishClipped, startClipped), inside);
        EXPECT_TRUE(line.Start() == s && line.Finish() == (inside ? s : f));
        EXPECT_TRUE(finishClipped == inside && !startClipped);
        EXPECT_EQ(line.GetDirection(), (f - s).Normalize()); // the cache is never refreshed
    }
    // A zero numerator over a zero denominator passes, 0.5 fails (the z >= zmin test).
    bool finishClipped = false, startClipped = false;
    C3Line still(SFVec3f(0, 0, 1), SFVec3f(0, 0, 1));
    EXPECT_TRUE(still.ClipToViewVolume(1.0, unread, finishClipped, startClipped));
    EXPECT_FALSE(still.ClipToViewVolume(1.5, unread, finishClipped, startClipped));
}

TEST(C3LineEnds, ZeroSegmentKeepsZeroDirectionAndTiesGoToTheFinish) {
    EXPECT_EQ(C3Line(SFVec3f(1, 2, 3), SFVec3f(1, 2, 3)).GetDirection(), SFVec3f(0, 0, 0));
    const C3Line line(SFVec3f(0, 0, 2), SFVec3f(0, 0, 3));
    EXPECT_EQ(line.ClosestEndPoint(SFVec3f(5, 0, 2.5)), line.Finish());
}
