// The curve over a caller's control points.
#include <c3curve.h>
#include <zqexception.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

/// Catmull-Rom in its matrix form: an oracle independent of the weights under test.
SFVec3f CatmullRom(double t, const SFVec3f& p0, const SFVec3f& p1, const SFVec3f& p2,
                   const SFVec3f& p3) {
    return (p1 * 2.0 + (p2 - p0) * t + (p0 * 2.0 - p1 * 5.0 + p2 * 4.0 - p3) * (t * t) +
            (p1 * 3.0 - p0 - p2 * 3.0 + p3) * (t * t * t)) *
           0.5;
}

/// The class, number and text of what SegmentLength throws.
std::string Thrown(const C3Curve& curve) {
    try {
        curve.SegmentLength(0, 4);
    } catch (const CZqException& e) {
        return e.Class() + " " + std::to_string(e.ErrNum()) + " " + e.Text();
    }
    return "nothing";
}

} // namespace

TEST(C3CurveLength, LastChordLeftOutAndFromToTrailTheSegmentFound) {
    // One point more than the count: the curve must never read it.
    std::vector<SFVec3f> p{{0, 0, 0}, {1, 0, 0}, {3, 0, 0}, {99, 99, 99}};
    C3Curve curve(p.data(), 3, C3Curve::kLinearInterpolator, 4);
    curve.ComputeIntegratePoints();
    // The last point's segment goes nowhere.
    EXPECT_TRUE(curve.GetIntegration(0) == 0.75 && curve.GetIntegration(1) == 2.25 &&
                curve.GetIntegration(2) == 2.25);
    // Ten steps of 0.1 add up to just below 1.0: an eleventh sample is taken near t = 1.
    EXPECT_NEAR(curve.SegmentLength(0, 10), 1.0, 1e-12);
    EXPECT_EQ(curve.SegmentLength(0, -3), 0.0); // ends instead of walking away from 1
    SFVec3f from, to;
    // d = entry 1 finds segment 1 at t = 1: its end P(2), with from/to P(0), P(1).
    EXPECT_EQ(curve.PointAtDistance(2.25, 0, from, to), p[2]);
    EXPECT_TRUE(from == p[0] && to == p[1]);
    // Segment 0 has no point before it: from is held at P(0).
    EXPECT_TRUE(curve.PointAtDistance(0.375, 0, from, to) == SFVec3f(0.5, 0, 0) && from == p[0]);
    // Past the end: the last point, from the zero-length last segment.
    EXPECT_TRUE(curve.PointAtDistance(100.0, 1, from, to) == p[2] && to == p[2]);
}

TEST(C3CurveSpline, EachKindHandsTheStatedFourPointsToTheSpline) {
    std::vector<SFVec3f> p{{0, 0, 0}, {1, 2, 0}, {3, 1, 1}, {4, 4, -2}};
    const double t = 0.3;
    for (const int i : {0, 1, 2}) {
        const SFVec3f prev = p[i == 0 ? 0 : i - 1];
        const SFVec3f next = p[i == 2 ? 3 : i + 2];
        const SFVec3f inner = prev + (p[i] - prev) * t;
        const SFVec3f outer = p[i + 1] + (next - p[i + 1]) * (1.0 - t);
        const SFVec3f want[] = {CatmullRom(t, p[i], p[i], p[i + 1], p[i + 1]),
                                CatmullRom(t, prev, p[i], p[i + 1], next),
                                CatmullRom(t, inner, p[i], p[i + 1], outer)};
        for (int kind = 2; kind <= 4; ++kind) {
            C3Curve curve(p.data(), 4, static_cast<C3Curve::ECurveInterpolator>(kind), 16);
            curve.ComputeIntegratePoints();
            const double before = i == 0 ? 0.0 : curve.GetIntegration(i - 1);
            const double d = before + t * (curve.GetIntegration(i) - before);
            SFVec3f from, to;
            EXPECT_LT((curve.PointAtDistance(d, 0, from, to) - want[kind - 2]).Length(), 1e-12)
                << kind << " " << i;
        }
    }
}

TEST(C3CurveKinds, ReservedAndUnknownKindsThrowDifferentErrors) {
    std::vector<SFVec3f> p{{0, 0, 0}, {1, 0, 0}};
    EXPECT_EQ(Thrown(C3Curve(p.data(), 2, C3Curve::kReservedInterpolator, 4)),
              "ZqGeneric 0 Not yet implemented");
    EXPECT_EQ(Thrown(C3Curve(p.data(), 2, static_cast<C3Curve::ECurveInterpolator>(7), 4)),
              "ZqMath 5 Unknown curve integrator");
}

TEST(C3CurveSharing, CopiesSharePointsAndKeepTheirOwnTable) {
    std::vector<SFVec3f> p{{0, 0, 0}, {2, 0, 0}};
    std::vector<SFVec3f> same = p;
    C3Curve curve(p.data(), 2, C3Curve::kLinearInterpolator, 2);
    EXPECT_EQ(curve == C3Curve(same.data(), 2, C3Curve::kLinearInterpolator, 2), 1);
    EXPECT_EQ(curve == C3Curve(same.data(), 2, C3Curve::kLinearInterpolator, 4), 0);
    EXPECT_TRUE(std::isnan(curve.GetIntegration(0))); // no table yet
    curve.ComputeIntegratePoints();
    C3Curve copy(nullptr, 0, C3Curve::kLinearInterpolator, 0);
    copy = curve;
    curve.ControlPoint(1, SFVec3f(4, 0, 0));
    EXPECT_EQ(copy.GetControlPoint(1), SFVec3f(4, 0, 0));
    curve.ComputeIntegratePoints(); // a new table; the copy keeps the one it shared
    EXPECT_TRUE(curve.GetIntegration(0) == 2.0 && copy.GetIntegration(0) == 1.0);
}
