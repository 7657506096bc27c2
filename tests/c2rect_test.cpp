// The rectangle's kind rules and the implicit line's infinite tolerance.
#include "c2rect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

void ExpectPoint(const SFVec2f& got, double x, double y) {
    EXPECT_EQ(got.x, x);
    EXPECT_EQ(got.y, y);
}

} // namespace

TEST(RectKinds, CornersCentreAndSizeByKind) {
    const C2Rect corners(0, 0, 10, 5, C2Rect::kTopLeftBottomRight);
    ExpectPoint(corners.GetCenter(), 5, 2.5);
    EXPECT_EQ(corners.GetWidth(), 10);
    // Kind 1: the centre is half the size, the corner not added.
    const C2Rect sized(2, 2, 4, 6, C2Rect::kTopLeftSize);
    ExpectPoint(sized.GetBottomRight(), 6, 8);
    ExpectPoint(sized.GetCenter(), 2, 3);
    EXPECT_EQ(sized.GetWidth(), 4);
    const C2Rect centred(0, 0, 4, 2, C2Rect::kCenterSize);
    ExpectPoint(centred.GetTopLeft(), -2, -1);
    EXPECT_EQ(centred.GetHeight(), 2);
    EXPECT_TRUE(centred.Contains(SFVec2f(2, 1)));
    // An unknown kind: corners at the origin, width and height from b as for a size.
    const C2Rect unknown(3, 3, 7, 9, static_cast<C2Rect::K2RectDefinition>(3));
    ExpectPoint(unknown.GetBottomRight(), 0, 0);
    ExpectPoint(unknown.GetSize(), 0, 0);
    EXPECT_EQ(unknown.GetWidth(), 7);
    EXPECT_TRUE(unknown.Contains(SFVec2f(0, 0)));
    ExpectPoint(C2Rect(CRect(-1, 2, 30, 40)).GetSize(), 31, 38);
}

TEST(RectKinds, ContainsIsInclusiveAndEqualityTolerant) {
    const C2Rect r(0, 0, 10, 5, C2Rect::kTopLeftBottomRight);
    EXPECT_TRUE(r.Contains(SFVec2f(10, 5)));
    EXPECT_TRUE(r.Contains(SFVec2f(0, 0)));
    EXPECT_FALSE(r.Contains(SFVec2f(10.000001, 5)));
    EXPECT_TRUE(r == C2Rect(0, 5e-6, 10, 5, C2Rect::kTopLeftBottomRight));
    EXPECT_TRUE(r != C2Rect(0, 2e-5, 10, 5, C2Rect::kTopLeftBottomRight));
    EXPECT_TRUE(r != C2Rect(0, 0, 10, 5, C2Rect::kTopLeftSize));
}

TEST(RectMoves, TranslateAndGrowFollowTheKind) {
    C2Rect sized(2, 2, 4, 6, C2Rect::kTopLeftSize);
    sized.Translate(SFVec2f(1, 1));
    ExpectPoint(sized.GetSize(), 4, 6);
    C2Rect corners(0, 0, 10, 5, C2Rect::kTopLeftBottomRight);
    corners.GrowToInclude(SFVec2f(20, 20));
    ExpectPoint(corners.GetBottomRight(), 20, 20);
    corners.GrowToInclude(SFVec2f(-1, 2));
    ExpectPoint(corners.GetTopLeft(), -1, 0);
    ExpectPoint(corners.GetBottomRight(), 20, 20);
    // Kind 1 beyond the top-left: the corner moves, the size stays.
    C2Rect moved(0, 0, 10, 5, C2Rect::kTopLeftSize);
    moved.GrowToInclude(SFVec2f(-3, 1));
    ExpectPoint(moved.GetTopLeft(), -3, 0);
    ExpectPoint(moved.GetSize(), 10, 5);
    moved.GrowToInclude(SFVec2f(20, 1));
    ExpectPoint(moved.GetSize(), 23, 5);
    // Kind 2: the size becomes the offset from the centre, on either side.
    C2Rect centred(0, 0, 4, 2, C2Rect::kCenterSize);
    centred.GrowToInclude(SFVec2f(-5, 0.5));
    ExpectPoint(centred.GetSize(), -5, 0.5);
}

TEST(LineEq, UnitNormalAndInfiniteClassifyTolerance) {
    const C2LineEq line(SFVec2f(0, 0), SFVec2f(1, 0));
    EXPECT_EQ(line.Eval(SFVec2f(5, 2)), 2.0);
    const C2LineEq slanted(SFVec2f(3, 4), SFVec2f(0, 0));
    EXPECT_DOUBLE_EQ(slanted.Eval(SFVec2f(4, -3)), 5.0);
    EXPECT_EQ(line.Classify(SFVec2f(0, 1e300)), 0);
    EXPECT_EQ(line.Classify(SFVec2f(0, -1e300)), 0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(line.Classify(SFVec2f(0, nan)), -1);
    const C2LineEq point(SFVec2f(1, 1), SFVec2f(1, 1));
    EXPECT_TRUE(std::isnan(point.Eval(SFVec2f(0, 0))));
}
