// Euler angles of the 24 axis orders.
#include <c3matrix.h>
#include <cquat.h>
#include <sfmatrix.h>
#include <sfvec4f.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>

TEST(EulerOrders, RoundTripOverAllOrders) {
    std::mt19937 random(2024u);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const SFVec4f e;
    for (int order = 0; order < 24; ++order) {
        const bool repeated = (order & 2) != 0;
        const double parity = (order & 4) != 0 ? -1.0 : 1.0; // odd orders negate the angles
        for (int trial = 0; trial < 25; ++trial) {
            // Inside the ranges the decomposition returns, away from gimbal lock.
            const double outer1 = -3.0 + 6.0 * unit(random);
            const double outer2 = -3.0 + 6.0 * unit(random);
            const double middle =
                repeated ? parity * (0.1 + 2.9 * unit(random)) : -1.5 + 3.0 * unit(random);
            SFMatrix m;
            e.Eul_ToSFMatrix(SFVec4f(outer1, middle, outer2, order + 0.9), m);
            const SFVec4f back = e.Eul_FromSFMatrix(m, order);
            const SFVec3f want(outer1, middle, outer2);
            EXPECT_LT((SFVec3f(back, false) - want).Length(), 1e-12) << order;
            EXPECT_EQ(back.w, order);
            // Through a quaternion: Eul_FromQuat reads q in the column form of SFMatrix(CQuat*),
            // while CQuat(SFMatrix) reads the row form, so the matrix goes in transposed.
            SFMatrix rows = m;
            const SFVec4f viaQuat = e.Eul_FromQuat(CQuat(rows.Transpose()), order);
            EXPECT_LT((SFVec3f(viaQuat, false) - want).Length(), 1e-5) << order;
        }
    }
}

TEST(EulerOrders, StaticXyzIsTheColumnProductAndDegenerateCases) {
    // Order 0: Rz(z)·Ry(y)·Rx(x) in the column form of C3Matrix.
    const SFVec4f e;
    SFMatrix m;
    e.Eul_ToSFMatrix(SFVec4f(0.3, -0.7, 1.1, 0), m);
    C3Matrix textbook;
    textbook.RotationMatrix(1.1, -0.7, 0.3);
    for (int i = 0; i < 9; ++i) {
        EXPECT_NEAR(m[4 * (i / 3) + i % 3], textbook[i], 1e-15);
    }
    SFMatrix identity;
    identity.Identity();
    for (int order = 0; order < 24; ++order) {
        e.Eul_ToSFMatrix(SFVec4f(0, 0, 0, order), m);
        EXPECT_TRUE(m == identity);
    }
    EXPECT_TRUE(e.Eul_FromSFMatrix(identity, 0) == SFVec4f(0, 0, 0, 0));
    EXPECT_TRUE(e.Eul_FromQuat(CQuat(0, 0, 0, 0), 20) == SFVec4f(0, 0, 0, 20));
    // Order 0 reads cy from m[0][0] and m[1][0]: exactly the threshold takes the z = 0 branch.
    SFMatrix lock = identity;
    lock[0] = 16.0 * DBL_EPSILON;
    lock[4] = 0.0;
    lock[8] = -1.0;
    lock[10] = 0.0;
    lock[9] = 0.5;
    EXPECT_EQ(e.Eul_FromSFMatrix(lock, 0).z, 0.0);
    lock[0] = std::nextafter(16.0 * DBL_EPSILON, 1.0);
    lock[4] = 1e-15; // now atan2(m[1][0], m[0][0]) is not zero
    EXPECT_NE(e.Eul_FromSFMatrix(lock, 0).z, 0.0);
    // The quaternion ignores the order.
    const CQuat q20 = e.Eul_ToQuat(SFVec4f(0.2, 0.4, -0.6, 20));
    const CQuat q0 = e.Eul_ToQuat(SFVec4f(0.2, 0.4, -0.6, 0));
    const CQuat ypr(SFVec3f(0.2, 0.4, -0.6));
    EXPECT_TRUE(q20.x == q0.x && q20.w == q0.w && q0.y == ypr.y && q0.z == ypr.z);
}
