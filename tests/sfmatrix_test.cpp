// The 4x4 transform: conventions, roundings, inversions and viewing helpers.
#include <sfmatrix.h>
#include <zqexception.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <utility>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

SFMatrix Identity() {
    SFMatrix m;
    return m.Identity();
}

/// Sixteen values none of which survives single-precision rounding.
SFMatrix Irrational(double base) {
    SFMatrix m;
    for (int i = 0; i < 16; ++i) {
        m[i] = std::sqrt(base + i + 0.5) / 3.0;
    }
    return m;
}

/// The ordinary row-by-column product a × b, in long double.
SFMatrix Product(const SFMatrix& a, const SFMatrix& b) {
    SFMatrix p;
    for (int i = 0; i < 4; ++i) {
        for (int k = 0; k < 4; ++k) {
            long double sum = 0;
            for (int j = 0; j < 4; ++j) {
                sum += static_cast<long double>(a[4 * i + j]) * b[4 * j + k];
            }
            p[4 * i + k] = static_cast<double>(sum);
        }
    }
    return p;
}

void ExpectNear(const SFMatrix& got, const SFMatrix& want, double tolerance) {
    for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(got[i], want[i], tolerance) << "element " << i;
    }
}

void ExpectVec(const SFVec3f& got, double x, double y, double z) {
    EXPECT_TRUE(got.x == x && got.y == y && got.z == z) << got.x << " " << got.y << " " << got.z;
}

} // namespace

TEST(SFMatrixProducts, OperandOrderAndAliasing) {
    const SFMatrix a = Irrational(2.0);
    const SFMatrix b = Irrational(40.0);
    const SFMatrix ba = Product(b, a);
    SFMatrix m;
    m.Multiply(a, b);
    ExpectNear(m, ba, 1e-12);
    ExpectNear(a * b, ba, 1e-12); // P * Q is Q × P
    SFMatrix* heap = a.Multiply(b);
    ExpectNear(*heap, ba, 1e-12);
    delete heap;
    SFMatrix in = a;
    in.MultiplyIn(b);
    ExpectNear(in, ba, 1e-12);
    // Multiply sums into this, so using an operand as the target gives a different matrix.
    SFMatrix aliased = a;
    aliased.Multiply(aliased, b);
    EXPECT_TRUE(aliased != ba);
}

TEST(SFMatrixProducts, PostConcatRoundsLeftOperand) {
    const SFMatrix p = Irrational(5.0);
    SFMatrix rounded = p;
    rounded.ConcatWith(Identity());
    SFMatrix kept = Identity();
    kept.ConcatWith(p);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(rounded[i], static_cast<double>(static_cast<float>(p[i])));
        EXPECT_EQ(kept[i], p[i]);
    }
    // The target may be either operand.
    SFMatrix self = p;
    self.PostConcatMatrix(self, Identity());
    EXPECT_TRUE(self == rounded);
    // RotationMatrix does not reset, and on the identity gives Rx × Ry × Rz.
    SFMatrix rx, ry, rz;
    rx.RotateX(0.3);
    ry.RotateY(-1.1);
    rz.RotateZ(2.0);
    SFMatrix r = Identity();
    r.RotationMatrix(0.3, -1.1, 2.0);
    ExpectNear(r, Product(Product(rx, ry), rz), 1e-7);
    SFMatrix moved = p;
    moved.RotationMatrix(0.0, 0.0, 0.0);
    EXPECT_TRUE(moved == rounded);
}

TEST(SFMatrixBuilders, RotationRuleAndAxisAngleTurnOppositeWays) {
    const double a = 0.7;
    SFMatrix x, y, z;
    x.RotateX(a);
    y.RotateY(a);
    z.RotateZ(a);
    EXPECT_EQ(x[6], std::sin(a)); // m[1][2]
    EXPECT_EQ(x[9], -std::sin(a));
    EXPECT_EQ(x[0], (1.0 - std::cos(a)) + std::cos(a)); // t + c, not 1.0
    EXPECT_EQ(y[8], std::sin(a));
    EXPECT_EQ(z[1], std::sin(a));
    ExpectVec(x.TransformPoint(SFVec3f(0, 1, 0)), 0, std::cos(a), std::sin(a)); // y toward z
    // The axis-angle constructor: the transpose, with sin rounded to single precision.
    const SFMatrix c(SFVec3f(0, 0, 1), a);
    EXPECT_EQ(c[1], -static_cast<double>(static_cast<float>(std::sin(a))));
    ExpectNear(c, z.Transpose(), 1e-7);
    // The angle is scaled by the axis length; a very short axis gives the identity.
    SFMatrix one;
    one.RotateZ(1.0);
    ExpectNear(SFMatrix(SFVec3f(0, 0, 2), 0.5), one.Transpose(), 1e-7);
    EXPECT_TRUE(SFMatrix(SFVec3f(5e-5, 0, 0), 1.0) == Identity());
}

TEST(SFMatrixBuilders, TranslationScaleAndRowOperations) {
    SFMatrix m = Irrational(1.0);
    m.SetPosition(SFVec3f(10, 10, 10));
    m.TranslateBy(SFVec3f(1, 2, 3)); // replaces, does not add
    ExpectVec(m.GetPosition(), 1, 2, 3);
    SFMatrix s = Identity();
    s.SetPosition(SFVec3f(1, 2, 3));
    s.ScaleBy(SFVec3f(2, 3, 4), SFVec3f(10, 20, 30));
    ExpectVec(s.GetPosition(), 12, 26, 42);
    s.PostScale(2.0, 1.0, 1.0);
    ExpectVec(s.GetLeftVector(), 4, 0, 0);
    s.PostTranslate(1.0, 0.0, 0.0);
    ExpectVec(s.GetLeftVector(), 16, 26, 42);
    EXPECT_EQ(s[3], 1.0); // 0 + 1·m[3][3]
    float f[16];
    std::iota(f, f + 16, 0.0f);
    EXPECT_TRUE(SFMatrix(f, false)[1] == 4.0 && SFMatrix(f, false)[4] == 1.0 &&
                SFMatrix(f, true)[1] == 1.0);
}

TEST(SFMatrixApply, ExactWTestsAndColumnSumDivisor) {
    SFMatrix m = Identity();
    m.SetPosition(SFVec3f(1, 2, 3));
    m[15] = 0.0; // w = 0 exactly: no division
    ExpectVec(m.TransformPoint(SFVec3f(1, 1, 1)), 2, 3, 4);
    m[15] = 2.0;
    ExpectVec(m.TransformPoint(SFVec3f(1, 1, 1)), 1, 1.5, 2);
    ExpectVec(m.TransformVector(SFVec3f(1, 1, 1)), 1, 1.5, 2); // translation and w too
    m[15] = 1.0;
    m[3] = 1.0; // w = x + 1
    ExpectVec(m.TransformPoint(SFVec3f(1, 1, 1)), 1, 1.5, 2);
    // operator* divides by the column sum 2, not by the point's w of 3.
    ExpectVec(m * SFVec3f(2, 1, 1), 1.5, 1.5, 2);
    m[3] = -1.0; // the column sums to 0.0 though the point's w is 3
    EXPECT_TRUE(std::isinf((m * SFVec3f(-2, 1, 1)).y));
    // The four-component form leaves row 3 out for w exactly 0.0.
    SFMatrix r = Identity();
    r[12] = kInf;
    EXPECT_EQ(r.TransformPoint(SFVec4f(1, 2, 3, 0)), SFVec4f(1, 2, 3, 0));
    SFVec3f points[2] = {SFVec3f(1, 1, 1), SFVec3f(2, 2, 2)};
    m[3] = 0.0;
    m.TransformPoints(points, points, 2);
    ExpectVec(points[1], 3, 4, 5);
}

TEST(SFMatrixCompare, NaNCountsAsEqualAndHashTruncates) {
    SFMatrix a = Identity();
    SFMatrix b = Identity();
    a[5] = kNaN;
    b[5] = 5.0;
    b[6] = -0.0; // equal to 0.0
    EXPECT_TRUE((a == b) == 1 && (a != b) == 0);
    b[15] = 2.0;
    EXPECT_TRUE((a == b) == 0 && (a != b) == 1);
    SFMatrix h;
    h.Zero();
    // Truncated toward zero, and only the low 32 bits kept.
    for (const auto& [v, want] : {std::pair{2.9, 2}, {-2.9, -2}, {4294967296.0 + 5.0, 5}}) {
        h[0] = v;
        EXPECT_EQ(h.Hash(), want) << v;
    }
}

TEST(SFMatrixInverse, InversesMatchLongDoubleOracle) {
    std::mt19937 random(4711u);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    for (int trial = 0; trial < 200; ++trial) {
        SFMatrix dominant; // well conditioned, and safe without pivoting
        for (int i = 0; i < 16; ++i) {
            dominant[i] = uniform(random) + (i % 5 == 0 ? 3.0 : 0.0);
        }
        SFMatrix inverse = dominant;
        inverse.Invert();
        ExpectNear(Product(dominant, inverse), Identity(), 1e-12);
        SFMatrix adjoint = dominant;
        adjoint.MakeAdjoint();
        EXPECT_TRUE(adjoint == inverse);
        // Rows shuffled, so that the pivoted inversion has to exchange them.
        int order[4] = {0, 1, 2, 3};
        std::shuffle(order, order + 4, random);
        SFMatrix m;
        for (int i = 0; i < 16; ++i) {
            m[i] = dominant[4 * order[i / 4] + i % 4];
        }
        // x = UntransformPoint(p) must solve x·M = p: the residual, in long double.
        const SFVec4f p(uniform(random), uniform(random), uniform(random), uniform(random));
        const SFVec4f x = m.UntransformPoint(p);
        for (int k = 0; k < 4; ++k) {
            long double sum = 0;
            for (int j = 0; j < 4; ++j) {
                sum += static_cast<long double>(x[j]) * m[4 * j + k];
            }
            EXPECT_NEAR(static_cast<double>(sum), p[k], 1e-13);
        }
        // The three-component form solves for w = 1 and does not divide by the result's w.
        const SFVec3f x3 = m.UntransformPoint(SFVec3f(p.x, p.y, p.z));
        const SFVec4f x4 = m.UntransformPoint(SFVec4f(p.x, p.y, p.z, 1.0));
        EXPECT_NEAR(x3.z, x4.z, 1e-13);
    }
}

TEST(SFMatrixInverse, PivotingAndSingularity) {
    SFMatrix swap;
    swap.Zero();
    swap[1] = swap[4] = swap[10] = swap[15] = 1.0;
    ExpectVec(swap.UntransformPoint(SFVec3f(1, 2, 3)), 2, 1, 3);
    SFMatrix naive = swap;
    naive.Invert(); // no pivoting: the zero pivot spreads
    EXPECT_FALSE(std::isfinite(naive[0]) && std::isfinite(naive[5]));
    SFMatrix singular = Identity();
    singular[10] = 0.0; // a zero row
    try {
        singular.UntransformPoint(SFVec4f(1, 2, 3, 1));
        ADD_FAILURE() << "no exception";
    } catch (const CZqMathException& e) {
        EXPECT_EQ(e.ErrNum(), 6);
    }
    singular[10] = 1.0;
    singular.SetUpVector(SFVec3f(1, 0, 0)); // rows 0 and 1 equal
    EXPECT_THROW(singular.UntransformPoint(SFVec3f(1, 2, 3)), CZqMathException);
}

TEST(SFMatrixDecomposition, DeterminantKeepsRowThreeScale) {
    SFMatrix t;
    t.Translate(2, 0, 0);
    EXPECT_EQ(t.GetDeterminant(), 0.5);
    SFMatrix d;
    d.Scale(SFVec3f(2, 3, 4));
    EXPECT_EQ(d.GetDeterminant(), 24.0);
    d.Scale(SFVec3f(1e-7, 1, 1));
    EXPECT_EQ(d.GetDeterminant(), 0.0);
    d.Scale(SFVec3f(0, 1, 1)); // the pivot search exchanges columns: the sign flips
    d[1] = 1.0;
    d[4] = 1.0;
    EXPECT_EQ(d.GetDeterminant(), -1.0);
}

TEST(SFMatrixDecomposition, NormalizeEulerAndInertMembers) {
    SFMatrix m = Irrational(3.0);
    m[15] = 2.0;
    SFMatrix n = m;
    n.Normalize();
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(n[i], m[i] / 2.0);
    }
    EXPECT_EQ(n[15], 2.0);
    for (const double w : {0.0, kNaN}) {
        n[15] = w;
        EXPECT_THROW(n.Normalize(), CZqMathException);
        EXPECT_EQ(n[0], m[0] / 2.0);
    }
    SFMatrix same = m;
    same.Reorthogonalize();
    same.TransposeRM();
    EXPECT_TRUE(same[1] == m[4] && same[3] == m[3] && same[12] == m[12]); // the 3x3 block only
    SFMatrix t = m;
    t.Transpose();
    EXPECT_TRUE(t[3] == m[12] && t[12] == m[3]);
    SFMatrix e = m;
    e.SetEulerAngles(SFVec3f(0.4, -2.5, 1.9));
    EXPECT_LT((e.GetEulerAngles() - SFVec3f(0.4, -2.5, 1.9)).Length(), 2e-14);
    EXPECT_EQ(e[15], 2.0);
}

TEST(SFMatrixView, PerspectiveRowThreeRayDirectionAndUVN) {
    SFMatrix m = Identity();
    m.Perspective1(4.0);
    EXPECT_TRUE(m[10] == 0.0 && m[14] == -0.25);
    m.Perspective3(1.0, 2.0, 4.0);
    ExpectVec(m.GetPosition(), -1.0, -0.5, -0.25);
    EXPECT_EQ(m[15], 1.0);
    m.PostPerspective(5.0);
    EXPECT_TRUE(SFVec4f(m[12], m[13], m[14], m[15]) == SFVec4f(0, 0, 0, 0));
    ExpectVec(Identity().RayDirection(SFVec2f(1, 2), 3.0), 6, 0, 0);
    SFVec3f u, v, n;
    EXPECT_EQ(BuildUVN(SFVec3f(0, 0, 2), SFVec3f(0, 1, 0), &u, &v, &n), &v);
    ExpectVec(n, 0, 0, 1);
    ExpectVec(v, 0, 1, 0);
    ExpectVec(u, -1, 0, 0);
    BuildUVN(SFVec3f(0, 0, 1), SFVec3f(0, 0, 3), &u, &v, &n); // up along the view
    ExpectVec(v, 0, 0, 0);
    ExpectVec(u, 0, 0, 0);
    BuildUVN(SFVec3f(0, 0, 0), SFVec3f(0, 3, 0), &u, &v, &n); // a zero view
    ExpectVec(n, 0, 0, 0);
    ExpectVec(v, 0, 1, 0);
    ExpectVec(u, 0, 0, 0);
}
