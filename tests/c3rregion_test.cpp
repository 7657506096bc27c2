// The axis-aligned box.
#include <zqmath.h>

#include <gtest/gtest.h>

namespace {

C3RRegion Box(double x0, double y0, double z0, double x1, double y1, double z1) {
    C3RRegion box;
    box.SetMinPoint(SFVec3f(x0, y0, z0));
    box.SetMaxPoint(SFVec3f(x1, y1, z1));
    return box;
}

} // namespace

TEST(C3RRegionUnion, TheZeroBoxIsTheIdentityAndADefaultBoxIsNot) {
    EXPECT_NE(&C3RRegion::kEmptyBox, &C3RRegion::kZeroBox);
    EXPECT_TRUE(C3RRegion::kEmptyBox == Box(0, 0, 0, 0, 0, 0) &&
                C3RRegion::kZeroBox == Box(0, 0, 0, 0, 0, 0));

    const C3RRegion r = Box(2, 2, 2, 3, 3, 3);
    C3RRegion zero = Box(0, 0, 0, 0, 0, 0);
    zero += r;
    EXPECT_TRUE(zero == r);
    C3RRegion kept = r;
    kept += C3RRegion::kZeroBox;
    EXPECT_TRUE(kept == r);

    C3RRegion pulled = r;
    pulled += C3RRegion();
    EXPECT_TRUE(pulled == Box(1, 1, 1, 3, 3, 3));

    // ExtendTo has no such special case.
    C3RRegion extended = r;
    extended.ExtendTo(C3RRegion::kEmptyBox);
    EXPECT_TRUE(extended == Box(0, 0, 0, 3, 3, 3));
}

TEST(C3RRegionEmptiness, PointAndInvertedBoxesAreEmptyFlatOnesAreNot) {
    EXPECT_TRUE(C3RRegion().IsEmpty() && Box(4, 4, 4, 4, 4, 4).IsEmpty());
    const C3RRegion flat(SFVec3f(5, 0, 3), SFVec3f(1, 2, 3));
    EXPECT_TRUE(flat == Box(1, 0, 3, 5, 2, 3) && !flat.IsEmpty());

    // SetEmpty clears the minimum only.
    C3RRegion box = Box(1, 1, 1, 2, 2, 2);
    box.SetEmpty();
    EXPECT_TRUE(box == Box(0, 0, 0, 2, 2, 2) && !box.IsEmpty());
    C3RRegion inverted = Box(1, 1, 1, -1, 2, 2);
    inverted.SetEmpty();
    EXPECT_TRUE(inverted.IsEmpty());

    inverted.IntersectWith(Box(0, 0, 0, 0.5, 0.5, 0.5));
    EXPECT_TRUE(inverted == Box(0, 0, 0, -1, 2, 2));
}

TEST(C3RRegionCorners, BottomFaceCounterClockwiseThenTopFaceRepeating) {
    const C3RRegion box = Box(1, 2, 3, 4, 5, 6);
    const SFVec3f expected[8] = {{1, 2, 3}, {4, 2, 3}, {4, 5, 3}, {1, 5, 3},
                                 {1, 2, 6}, {4, 2, 6}, {4, 5, 6}, {1, 5, 6}};
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(box.Corner(i) == expected[i]) << i;
        EXPECT_TRUE(box.Contains(box.Corner(i))) << i;
    }
    EXPECT_TRUE(box.Corner(9) == expected[5] && box.Corner(-4) == expected[0] &&
                box.Corner(-1) == expected[0]);
}

TEST(C3RRegionTransform, DividesByTheColumnSumAndKeepsTheCornersOrder) {
    SFMatrix m;
    m.Identity();
    C3RRegion box = Box(-1, 2, 3, 4, 5, 6);
    // A translation with a last column summing to 2: (p + t) / 2 whatever the point.
    m[3] = m[11] = 1;
    m[7] = -1;
    m[12] = 2;
    box.Transform(m);
    EXPECT_TRUE(box == Box(0.5, 1, 1.5, 3, 2.5, 3));

    // A half turn about z leaves the minimum above the maximum: not reordered.
    C3Matrix half(-1, 0, 0, 0, -1, 0, 0, 0, 1);
    C3RRegion turned = Box(1, 1, 1, 2, 2, 2);
    turned.Transform(half);
    EXPECT_TRUE(turned == Box(-1, -1, 1, -2, -2, 2));
    turned.OrderPoints();
    EXPECT_TRUE(turned == Box(-2, -2, 1, -1, -1, 2));
}

TEST(C3RRegionEditing, GrowRescalePinAndResize) {
    C3RRegion box = Box(0, 0, 0, 2, 4, 6);
    EXPECT_TRUE(box.RescaleInto(box.GetCenter()) == SFVec3f(0.5, 0.5, 0.5));
    box.GrowByFactor(0.5);
    EXPECT_TRUE(box == Box(-1, -2, -3, 3, 6, 9));
    box.SetSize(SFVec3f(2, 2, 2));
    box.SetCenter(SFVec3f(10, 10, 10));
    EXPECT_TRUE(box == Box(9, 9, 9, 11, 11, 11));

    // On an inverted axis the maximum wins the clamp.
    SFVec3f p(5, 0, 10);
    Box(3, 0, 0, 1, 1, 1).Pin(p);
    EXPECT_TRUE(p == SFVec3f(1, 0, 1));
    EXPECT_TRUE(Box(0, 0, 0, 2, 2, 2).Contains(Box(0, 0, 0, 2, 1, 2)));
    EXPECT_FALSE(Box(0, 0, 0, 2, 2, 2).Contains(SFVec3f(2, 2, 2.5)));
}
