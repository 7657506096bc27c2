// The 2D vector: the exact planar predicates, tolerant equality, image sizes, framework points.
#include <zqmath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <type_traits>

namespace {

/// The in-circle determinant in exact integer arithmetic, taken relative to d: an independent
/// formulation of the same test.
int InCircleExact(const SFVec2f v[4]) {
    std::int64_t m[3][3];
    for (int i = 0; i < 3; ++i) {
        const auto dx = static_cast<std::int64_t>(v[i].x) - static_cast<std::int64_t>(v[3].x);
        const auto dy = static_cast<std::int64_t>(v[i].y) - static_cast<std::int64_t>(v[3].y);
        m[i][0] = dx;
        m[i][1] = dy;
        m[i][2] = dx * dx + dy * dy;
    }
    const std::int64_t det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                             m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                             m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    return det > 0 ? 1 : 0;
}

} // namespace

TEST(SFVec2fPredicates, TriAreaIsTwiceTheSignedAreaAndCcwIsStrict) {
    const SFVec2f o(0.0, 0.0), ex(1.0, 0.0), ey(0.0, 1.0);
    EXPECT_EQ(SFVec2f::TriArea(o, ex, ey), 1.0);
    EXPECT_EQ(SFVec2f::ccw(o, ex, ey), 1);
    EXPECT_TRUE(SFVec2f::ccw(o, ey, ex) == 0 && SFVec2f::ccw(o, ex, SFVec2f(2.0, 0.0)) == 0);
    // The quarter-turn of a vector lies counter-clockwise of it.
    const SFVec2f v(3.0, -1.5);
    EXPECT_EQ(SFVec2f::ccw(o, v, v.MakePerpendicular()), 1);
}

TEST(SFVec2fPredicates, RoundedSignsAreThoseOfTheLiteralFormula) {
    // Nearly collinear points that turn clockwise in exact arithmetic; the formula as written
    // rounds to +7.1e-15, and the triangulation depends on that very sign. Another base point
    // or the expanded determinant would give a different sign.
    const SFVec2f a(0.713436998399841, 1.3989404460874981);
    const SFVec2f b(3.4840672717936103, 4.88997275797254);
    const SFVec2f c(16.810100305041786, 21.68095795547855);
    EXPECT_EQ(SFVec2f::TriArea(a, b, c), 7.105427357601002e-15);
    EXPECT_EQ(SFVec2f::ccw(a, b, c), 1);
    // d lies just outside the circle through p, q, r, but the literal sum rounds positive.
    const SFVec2f p(0.7257274413028644, -0.44058531573615356);
    const SFVec2f q(-0.06824693368726073, -1.6327555337194095);
    const SFVec2f r(0.47679671493266707, -1.373009498397563);
    const SFVec2f d(-0.8866329420851167, -1.3185802723953877);
    EXPECT_EQ(SFVec2f::InCircle(p, q, r, d), 1);
}

TEST(SFVec2fPredicates, InCircleAgreesWithExactDeterminant) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(SFVec2f::InCircle({0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}, {nan, 0.5}), 0);

    // Small integer coordinates keep every product exact, so the signs must match exactly,
    // on-circle cases (grid points of one circle) included.
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> coord(-40, 40);
    int inside = 0;
    for (int n = 0; n < 4000; ++n) {
        SFVec2f v[4];
        for (SFVec2f& corner : v) {
            corner = SFVec2f(coord(rng), coord(rng));
        }
        if (SFVec2f::ccw(v[0], v[1], v[2]) == 0) {
            continue;
        }
        const int expected = InCircleExact(v);
        inside += expected;
        ASSERT_EQ(SFVec2f::InCircle(v[0], v[1], v[2], v[3]), expected) << n;
    }
    EXPECT_GT(inside, 100);
    const SFVec2f onCircle[4] = {{5.0, 0.0}, {0.0, 5.0}, {-3.0, 4.0}, {4.0, -3.0}};
    EXPECT_EQ(SFVec2f::InCircle(onCircle[0], onCircle[1], onCircle[2], onCircle[3]), 0);
}

TEST(SFVec2fEquality, ToleranceOfOneHundredThousandthStrict) {
    EXPECT_TRUE(SFVec2f(1.0, 2.0) == SFVec2f(1.000001, 2.0)); // x is compared with tolerance too
    EXPECT_FALSE(SFVec2f(0.0, 0.0) == SFVec2f(1e-5, 0.0));    // exactly the tolerance: unequal
    EXPECT_TRUE(SFVec2f(0.0, 0.0) == SFVec2f(0.0, std::nextafter(1e-5, 0.0)));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(SFVec2f(nan, 0.0) != SFVec2f(nan, 0.0));
}

TEST(SFVec2fImage, HarmonicLimitsFindNextPowersAndRejectLargeSizes) {
    SFVec2f remainder;
    const SFVec2f e = SFVec2f(300.0, 64.0).HarmonicLimits(remainder);
    EXPECT_TRUE(e.x == 9.0 && e.y == 6.0 && remainder.x == 212.0 && remainder.y == 0.0);
    const SFVec2f small = SFVec2f(0.0, 1.0).HarmonicLimits(remainder);
    EXPECT_TRUE(small.x == 0.0 && small.y == 0.0 && remainder.x == 1.0);
    EXPECT_EQ(SFVec2f(2047.5, 1.0).HarmonicLimits(remainder).x, 11.0);

    for (const SFVec2f& bad : {SFVec2f(2048.0, 1.0), SFVec2f(1.0, 2048.0), SFVec2f(4.0, -1.0)}) {
        try {
            bad.IsBinaryHarmonic();
            ADD_FAILURE() << bad.x << ", " << bad.y;
        } catch (const CZqMathException& e) {
            EXPECT_EQ(e.ErrNum(), 8);
        }
    }
    EXPECT_TRUE(SFVec2f(256.0, 1024.0).IsBinaryHarmonic());
    EXPECT_FALSE(SFVec2f(0.0, 4.0).IsBinaryHarmonic() || SFVec2f(4.0, 3.0).IsBinaryHarmonic());
}

TEST(SFVec2fImage, WrappingKeepsPlusMinusOneAndElevationUsesFixedHeight) {
    SFVec2f w(2.25, -3.5), ones(1.0, -1.0);
    w.RepeatingIntegralArea();
    ones.RepeatingIntegralArea();
    EXPECT_TRUE(w.x == 0.25 && w.y == -0.5 && ones.x == 1.0 && ones.y == -1.0);

    SFVec2f flat(0.0, 0.0), diagonal(60.0, 80.0); // 100 away at height 100: 45 degrees
    flat.EulerAngle();
    diagonal.EulerAngle();
    EXPECT_TRUE(flat.x == 1.0 && flat.y == 0.0);
    EXPECT_DOUBLE_EQ(diagonal.x, std::sqrt(0.5));
    EXPECT_DOUBLE_EQ(diagonal.y, std::sqrt(0.5));
}

TEST(SFVec2fBasics, ZeroingDefaultIndexPointsAndDividingNormalize) {
    const SFVec2f zero;
    EXPECT_TRUE(zero.x == 0.0 && zero.y == 0.0);
    SFVec2f v(1.0, 2.0);
    v[5] = 9.0;
    EXPECT_EQ(v.Y(), 9.0);
    static_assert(std::is_same<decltype(v = zero), void>::value, "assignment returns nothing");

    const CPoint p = SFVec2f(2.9, -2.9);
    EXPECT_TRUE(p.x == 2 && p.y == -2);
    // Out of the int range the low 32 bits of the truncation are kept: defined, not UB.
    const CPoint wrapped = SFVec2f(3e9 + 0.5, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(wrapped.x == static_cast<int>(3000000000LL - 4294967296LL) && wrapped.y == 0);

    // Division by the length, unlike SFVec3f's reciprocal product: exactly 0.6 here.
    EXPECT_EQ(SFVec2f(3.0, 4.0).Normalize().x, 0.6);
    EXPECT_EQ(SFVec2f(SFVec3f(6.0, 3.0, 3.0), true).x, 2.0);
    EXPECT_EQ(SFVec2f(SFVec3f(6.0, 3.0, 3.0), false).x, 6.0);
}

TEST(SFVec2fProjection, RowsTimesTheHomogeneousPointAndNoDivisionByZero) {
    // Storage order e0..e8 row by row: the constructor takes the columns.
    C3Matrix m(1, 4, 0, 2, 5, 0, 3, 6, 2);
    const SFVec2f p = SFVec2f(1, 1).MulPointByProjMatrix(&m);
    EXPECT_TRUE(p.x == (1 + 2 + 3) / 2.0 && p.y == (4 + 5 + 6) / 2.0);
    C3Matrix flat(1, 4, 0, 2, 5, 0, 3, 6, 0);
    const SFVec2f q = SFVec2f(1, 1).MulPointByProjMatrix(&flat);
    EXPECT_TRUE(q.x == 6.0 && q.y == 15.0);
}
