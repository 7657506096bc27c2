// Quaternions and axis-angle rotations: single-precision results, conventions, interpolation.
#include <cquat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <random>

namespace {

double Single(double v) {
    return static_cast<float>(v);
}

void ExpectQuat(const CQuat& q, double x, double y, double z, double w, double tolerance = 0) {
    EXPECT_NEAR(q.x, x, tolerance);
    EXPECT_NEAR(q.y, y, tolerance);
    EXPECT_NEAR(q.z, z, tolerance);
    EXPECT_NEAR(q.w, w, tolerance);
}

void ExpectSingle(const CQuat& q) {
    EXPECT_TRUE(q.x == Single(q.x) && q.y == Single(q.y) && q.z == Single(q.z) &&
                q.w == Single(q.w));
}

/// The Hamilton product a ⊗ b in double.
CQuat Hamilton(const CQuat& a, const CQuat& b) {
    return CQuat(a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
                 a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
                 a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
                 a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z);
}

CQuat RandomUnit(std::mt19937& random) {
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    const SFVec3f axis(uniform(random), uniform(random), uniform(random));
    return CQuat(axis, 3.0 * uniform(random));
}

} // namespace

TEST(CQuatPrecision, KernelResultsAreSinglePrecision) {
    std::mt19937 random(99u);
    for (int trial = 0; trial < 20; ++trial) {
        const CQuat p = RandomUnit(random);
        const CQuat q(0.3 * p.x, p.y, p.z, 1.7 * p.w); // not unit
        CQuat each[] = {
            {}, {}, {}, {}, {}, p.Slerp(q, 0.3), p.Squad(q, p, q, 0.3), CQuat(p.RotationMatrix())};
        each[0].Multiply(p, q);
        each[1].Inverse(q);
        each[2].Normalize(q);
        each[3].Exp(q);
        each[4].Ln(p);
        for (const CQuat& e : each) {
            ExpectSingle(e);
        }
        ExpectSingle(CQuat(SFVec3f(q.x, q.y, q.z), q.w));
        double angle;
        const SFVec3f axis = p.ToAxisAngle(angle);
        EXPECT_TRUE(angle == Single(angle) && axis.y == Single(axis.y));
        const SFMatrix m = q.RotationMatrix();
        for (int i = 0; i < 16; ++i) {
            EXPECT_EQ(m[i], Single(m[i]));
        }
    }
}

TEST(CQuatPrecision, MixedPrecisionMembers) {
    CQuat c;
    c.Conjugate(CQuat(0.1, 0.2, 0.3, 0.4)); // w stays double
    ExpectQuat(c, -Single(0.1), -Single(0.2), -Single(0.3), 0.4);
    // Only q.z is rounded.
    EXPECT_EQ(CQuat(1, 1, 1, 1).DotProduct(CQuat(0.1, 0.1, 0.1, 0.1)),
              0.1 + Single(0.1) + 0.1 + 0.1);
    EXPECT_TRUE(CQuat(0, 0, 0, 1 + 1e-9).IsIdentity());
    EXPECT_TRUE(CQuat(0, 1e-50, -1e-50, 1).IsIdentity());
    EXPECT_FALSE(CQuat(1e-300, 0, 0, 1).IsIdentity());
    EXPECT_TRUE(CQuat(1, 2, 2, 0).Magnitude() == 9.0 && CQuat(1, 2, 2, 0).Length() == 3.0);
}

TEST(CQuatKernel, DegenerateInputs) {
    ExpectQuat(CQuat(SFVec3f(0, 0, 0), 1.0), 0, 0, 0, Single(std::cos(0.5)));
    CQuat r;
    r.Normalize(CQuat(0, 0, 0, 0));
    ExpectQuat(r, 0, 0, 0, 0);
    r.Normalize(CQuat(0, 0, 0, 1.000001)); // near unit: only rounded
    ExpectQuat(r, 0, 0, 0, Single(1.000001));
    // A norm of exactly 1e-10f lies above the tiny bound, which is the float just below it.
    r.Normalize(CQuat(2.7e-9, 0, 0, 9.99999975e-06));
    EXPECT_GT(r.w, 0.99);
    r.Inverse(CQuat(0, 0, 0, 2));
    ExpectQuat(r, 0, 0, 0, 0.5);
    r.Inverse(CQuat(0, 0, 0, 0));
    ExpectQuat(r, 0, 0, 0, 0);
    r.Ln(CQuat(0, 0, 0, 1));
    ExpectQuat(r, 0, 0, 0, 0);
    r.Exp(CQuat(0, 0, 0, 0));
    ExpectQuat(r, 0, 0, 0, 1);
    double angle = 5.0;
    const SFVec3f axis = CQuat(0, 0, 0, 0).ToAxisAngle(angle);
    EXPECT_TRUE(axis.x == 1.0 && angle == 0.0);
}

TEST(CQuatKernel, AlgebraMatchesDoubleOracle) {
    std::mt19937 random(7u);
    for (int trial = 0; trial < 50; ++trial) {
        const CQuat a = RandomUnit(random);
        const CQuat b = RandomUnit(random);
        CQuat r;
        r.Multiply(a, b); // a followed by b: the Hamilton product b ⊗ a
        const CQuat h = Hamilton(b, a);
        ExpectQuat(r, h.x, h.y, h.z, h.w, 1e-6);
        CQuat l, e;
        l.Ln(a);
        e.Exp(l);
        ExpectQuat(e, a.x, a.y, a.z, a.w, 1e-6);
        double angle;
        const SFVec3f axis = a.ToAxisAngle(angle);
        ExpectQuat(CQuat(axis, angle), a.x, a.y, a.z, a.w, 1e-6);
        // From a matrix, both branches of the trace test.
        for (const CQuat& q : {a, CQuat(a.x, a.y, a.z, 0.01)}) {
            CQuat n;
            n.Normalize(q);
            const CQuat m(n.RotationMatrix());
            const double sign = m.w * n.w >= 0 ? 1.0 : -1.0;
            ExpectQuat(m, sign * n.x, sign * n.y, sign * n.z, sign * n.w, 1e-6);
        }
    }
    // Yaw about y, pitch about x, roll about z: q = yaw ⊗ pitch ⊗ roll.
    const CQuat ypr(SFVec3f(0.4, -1.2, 2.2));
    const CQuat want = Hamilton(Hamilton(CQuat(0, std::sin(0.2), 0, std::cos(0.2)),
                                         CQuat(std::sin(-0.6), 0, 0, std::cos(-0.6))),
                                CQuat(0, 0, std::sin(1.1), std::cos(1.1)));
    ExpectQuat(ypr, want.x, want.y, want.z, want.w, 1e-6);
}

TEST(CQuatInterpolation, ShorterArcLinearBranchAndBlends) {
    const CQuat q(0.1, 0.7, -0.5, 0.5);
    const CQuat minus(-0.1, -0.7, 0.5, -0.5);
    for (const double t : {0.0, 0.25, 0.8}) {
        ExpectQuat(q.Slerp(minus, t), Single(0.1), Single(0.7), Single(-0.5), Single(0.5), 1e-7);
    }
    // A dot of 0.999995 keeps the linear weights: x = t·b.x rather than sin(tθ).
    const double phi = std::acos(0.999995);
    const CQuat b(std::sin(phi), 0, 0, 0.999995);
    EXPECT_EQ(CQuat().Slerp(b, 0.5).x, Single(0.5f * static_cast<float>(b.x)));
    // The spherical branch, against the double formula.
    const CQuat c(SFVec3f(0, 1, 0), 2.0);
    ExpectQuat(CQuat().Slerp(c, 0.25), 0, std::sin(0.25), 0, std::cos(0.25), 1e-6);
    // Squad is three slerps; the barycentric blend falls back to its first quaternion.
    const CQuat a(SFVec3f(1, 0, 0), 0.5);
    const CQuat d(SFVec3f(0, 0, 1), -0.5);
    const CQuat chain = a.Slerp(d, 0.3).Slerp(b.Slerp(c, 0.3), 2 * 0.3 * 0.7);
    ExpectQuat(a.Squad(b, c, d, 0.3), chain.x, chain.y, chain.z, chain.w, 1e-6);
    CQuat bary(9, 9, 9, 9);
    bary.BaryCenter(CQuat(0.1, 0.2, 0.3, 0.4), a, c, 0.3, -0.3);
    ExpectQuat(bary, Single(0.1), Single(0.2), Single(0.3), Single(0.4));
    bary.BaryCenter(a, c, d, 0.0, 1.0);
    ExpectQuat(bary, d.x, d.y, d.z, d.w, 1e-6);
}

TEST(SFRotationConventions, RuleMatrixAndQuaternionAgree) {
    SFRotation r(SFVec3f(0, 0, 2), 0.6);
    r.X(5.0);
    EXPECT_EQ(r.X(), 0.0);
    EXPECT_EQ(SFRotation().Y(), 1.0);
    SFMatrix z;
    z.RotateZ(0.6);
    EXPECT_TRUE(r.Transform() == z); // the axis is normalised
    EXPECT_TRUE(static_cast<SFMatrix>(r) == z);
    // A NaN axis length scales the axis like any other length: no rotation element survives.
    const SFMatrix unknown = SFRotation(std::nan(""), 0, 0, 0.5).Transform();
    EXPECT_TRUE(std::isnan(unknown[5]) && std::isnan(unknown[10]));
    // The quaternion's matrix agrees with the rule; SFMatrix(CQuat*) is its transpose.
    CQuat q(SFVec3f(0.3, -0.4, 0.5), 1.1);
    const SFMatrix rule = SFRotation(SFVec3f(0.3, -0.4, 0.5), 1.1).Transform();
    const SFMatrix kernel = q.RotationMatrix();
    const SFMatrix column(&q);
    for (int i = 0; i < 12; ++i) {
        if (i % 4 != 3) {
            EXPECT_NEAR(kernel[i], rule[i], 1e-6);
            EXPECT_NEAR(column[4 * (i % 4) + i / 4], rule[i], 1e-6);
        }
    }
}

TEST(SFMatrixFromQuat, WritesOnlyTheUpperBlock) {
    alignas(SFMatrix) unsigned char storage[sizeof(SFMatrix)];
    double* raw = reinterpret_cast<double*>(storage);
    std::fill(raw, raw + 16, 7.0);
    CQuat q(0, 0, 0, 2); // not unit: s = 2 / 4
    const SFMatrix* m = new (storage) SFMatrix(&q);
    for (const int i : {3, 7, 11, 12, 13, 14, 15}) {
        EXPECT_EQ((*m)[i], 7.0);
    }
    EXPECT_EQ((*m)[0], 1.0);
}
