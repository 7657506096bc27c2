// The mesh vector handles.
#include <meshvector.h>
#include <zqexception.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

TEST(MeshReinterpolate, DefaultsFirstThenYScaledOverTheSourceCount) {
    std::vector<SFVec3f> two{{0, 0, 0}, {4, 10, 2}};
    CAsymMeshVector mesh(&two);
    mesh.ReinterpolateOverY(3);
    const std::vector<SFVec3f> want{{0, 0, 0}, {0, 0, 0},  {0, 0, 0},
                                    {0, 0, 0}, {2, 10, 1}, {4, 10, 2}};
    EXPECT_EQ(*mesh.GetPoints(), want);
    EXPECT_EQ(two.size(), 2u); // the caller's list is left alone

    // y over c = 3 rather than c - 1 = 2: 0, 7.5, 15, then 20 held (not 0, 5, 10, 15, 20).
    std::vector<SFVec3f> three{{0, 0, 0}, {1, 10, 0}, {8, 20, 4}};
    CAsymMeshVector profile(&three);
    profile.ReinterpolateOverY(5);
    const std::vector<SFVec3f>& got = *profile.GetPoints();
    ASSERT_EQ(got.size(), 10u);
    const double y[] = {0, 7.5, 15, 20, 20};
    for (int k = 0; k < 5; ++k) {
        EXPECT_EQ(got[5 + k], SFVec3f(2.0 * k, y[k], k)) << k;
    }
    // One sample divides by zero; it is still the first point, after one default.
    CAsymMeshVector single(&three);
    single.ReinterpolateOverY(1);
    EXPECT_EQ(single.GetPoints()->size(), 2u);
    EXPECT_EQ(single.GetPoints()->back(), three[0]);
}

TEST(MeshReinterpolate, BadCountOrNoPointsLeaveTheListAlone) {
    std::vector<SFVec3f> two{{0, 0, 0}, {4, 10, 2}};
    CAsymMeshVector mesh(&two);
    for (const long n : {0L, -5L}) {
        try {
            mesh.ReinterpolateOverY(n);
            ADD_FAILURE() << n;
        } catch (const CZqMathException& e) {
            EXPECT_EQ(e.ErrNum(), 7);
        }
    }
    EXPECT_EQ(mesh.GetPoints(), &two);
    std::vector<SFVec3f> none;
    CAsymMeshVector empty(&none);
    EXPECT_THROW(empty.ReinterpolateOverY(3), std::out_of_range);
    EXPECT_EQ(empty.GetPoints(), &none);
    CAsymMeshVector null;
    EXPECT_THROW(null.ReinterpolateOverY(3), std::out_of_range);
}

TEST(MeshReinterpolate, SixteenBitCounterCapsTheSamples) {
    CAsymMeshVector mesh(2L);
    mesh.ReinterpolateOverY(70000);
    EXPECT_EQ(mesh.GetPoints()->size(), 70000u + 65535u);
}

TEST(MeshSharing, HandlesShareListsAndOutliveEachOther) {
    CAsymMeshVector a(3L);
    CAsymMeshVector b = a;
    (*a.GetPoints())[1] = SFVec3f(1, 2, 3);
    EXPECT_EQ((*b.GetPoints())[1], SFVec3f(1, 2, 3));
    a.ReinterpolateOverY(2); // b keeps the old list alive
    EXPECT_EQ(b.GetPoints()->size(), 3u);

    CSymMeshVector sym(b); // a copy of the points, not of the list
    CSymMeshVector other(7u);
    other = sym;
    (*sym.GetPoints())[0] = SFVec3f(5, 5, 5);
    EXPECT_EQ((*other.GetPoints())[0], SFVec3f(5, 5, 5));
    EXPECT_EQ((*b.GetPoints())[0], SFVec3f(0, 0, 0));
    EXPECT_EQ(other.GetPoints()->size(), 3u);
    // Identity, not contents.
    EXPECT_EQ(sym == other, 0);
    EXPECT_EQ(sym == sym, 1);
    EXPECT_EQ(CSymMeshVector(CAsymMeshVector()).GetPoints()->size(), 0u);
}
