// The mesh vector handles.
#include <meshvector.h>
#include <zqexception.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

TEST(MeshReinterpolate, DefaultsFirstThenYScaledOverTheSourceCount) {
    // y over c = 3 rather than c - 1: 0, 7.5, 15, then 20 held (not 0, 5, 10, 15, 20).
    std::vector<SFVec3f> three{{0, 0, 0}, {1, 10, 0}, {8, 20, 4}};
    CAsymMeshVector profile(&three);
    profile.ReinterpolateOverY(5);
    // The five default points first, the samples after them.
    const std::vector<SFVec3f> want{{0, 0, 0}, {0, 0, 0},   {0, 0, 0},  {0, 0, 0},  {0, 0, 0},
                                    {0, 0, 0}, {2, 7.5, 1}, {4, 15, 2}, {6, 20, 3}, {8, 20, 4}};
    EXPECT_EQ(*profile.GetPoints(), want);
    EXPECT_EQ(three.size(), 3u); // the caller's list is left alone
    // One sample divides by zero and is still the first point, after one default.
    profile = CAsymMeshVector(&three);
    profile.ReinterpolateOverY(1);
    EXPECT_EQ(*profile.GetPoints(), (std::vector<SFVec3f>{{0, 0, 0}, three[0]}));
    // The 16-bit sample counter stops at 65535.
    profile.ReinterpolateOverY(70000);
    EXPECT_EQ(profile.GetPoints()->size(), 70000u + 65535u);
}

TEST(MeshReinterpolate, BadCountOrNoPointsLeaveTheListAlone) {
    std::vector<SFVec3f> two{{0, 0, 0}, {4, 10, 2}};
    CAsymMeshVector mesh(&two);
    try {
        mesh.ReinterpolateOverY(0);
        ADD_FAILURE() << "n = 0 accepted";
    } catch (const CZqMathException& e) {
        EXPECT_EQ(e.ErrNum(), 7);
    }
    EXPECT_EQ(mesh.GetPoints(), &two);
    std::vector<SFVec3f> none;
    CAsymMeshVector empty(&none);
    EXPECT_THROW(empty.ReinterpolateOverY(3), std::out_of_range);
    EXPECT_EQ(empty.GetPoints(), &none);
    EXPECT_THROW(CAsymMeshVector().ReinterpolateOverY(3), std::out_of_range);
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
    EXPECT_EQ(sym == other, 0); // identity, not contents
    EXPECT_EQ(sym == sym, 1);
    EXPECT_EQ(CSymMeshVector(CAsymMeshVector()).GetPoints()->size(), 0u);
}
