// The 3D vector: colours, text, normalisation, NaN orderings, the kept quirks, the spline.
#include <zqmath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

std::uint64_t Bits(double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

void ExpectBitwise(const SFVec3f& actual, const SFVec3f& expected) {
    EXPECT_EQ(Bits(actual.x), Bits(expected.x));
    EXPECT_EQ(Bits(actual.y), Bits(expected.y));
    EXPECT_EQ(Bits(actual.z), Bits(expected.z));
}

} // namespace

TEST(SFVec3fColour, PacksLowBytesOf255ScaleAndUnpacksWithQuarterByteScale) {
    EXPECT_EQ(static_cast<unsigned long>(SFVec3f(1.0, 0.5, 0.0)), 0x00007FFFul);
    // No clamping: 1.5 gives 382, whose low byte is 126; -0.5 gives -127, low byte 0x81.
    EXPECT_EQ(static_cast<unsigned long>(SFVec3f(1.5, -0.5, 0.0)), 0x0000817Eul);
    ExpectBitwise(SFVec3f(0x00FF8000ul), SFVec3f(0.0, 0.5, 0.99609375));
    // Byte 3 is ignored, and 255 comes back as 254: the asymmetry is kept.
    EXPECT_EQ(static_cast<unsigned long>(SFVec3f(0xABFFFFFFul)), 0x00FEFEFEul);

    // Far beyond 32 bits the packed value is still the exact low byte of the truncation and
    // never reaches bit 24, also where unsigned long has 64 bits.
    for (double v : {1e6, -3.3e7, 8.5e12, -1.25e15}) {
        const long long truncated = static_cast<long long>(v * 255.0);
        const unsigned long packed = SFVec3f(v, 0.0, v);
        EXPECT_EQ(packed, static_cast<unsigned long>((truncated & 0xFF) * 0x010001)) << v;
    }
    EXPECT_EQ(static_cast<unsigned long>(SFVec3f(kNaN, HUGE_VAL, 1e300)), 0ul);
}

TEST(SFVec3fText, WritesPercentFOfEachComponent) {
    char buffer[96];
    EXPECT_EQ(SFVec3f(-0.5, 1e6, 1.0 / 3.0).String(buffer), buffer);
    EXPECT_STREQ(buffer, "-0.500000 1000000.000000 0.333333");
}

TEST(SFVec3fNormalize, ExactZeroAndOneShortcutsAndReciprocalProduct) {
    ExpectBitwise(SFVec3f(0.0, 0.0, 0.0).Normalize(), SFVec3f(0.0, 0.0, 0.0));
    const SFVec3f unit(0.6, 0.8, 0.0); // its length rounds to exactly 1.0
    ASSERT_EQ(unit.Length(), 1.0);
    ExpectBitwise(unit.Normalize(), unit);
    // A product with 1/5 rather than a division by 5: x is 0.6000000000000001, not 0.6.
    double length = 0.0;
    const SFVec3f n = SFVec3f(3.0, 0.0, 4.0).Normalize(length);
    EXPECT_TRUE(length == 5.0 && n.x == 0.6000000000000001 && n.z == 0.8) << n.x;
    // A NaN length returns the vector unchanged: y stays 1.
    EXPECT_EQ(SFVec3f(kNaN, 1.0, 0.0).Normalize().y, 1.0);
    ExpectBitwise(SFVec3f(0.0, 0.0, 0.0).Scale(2.0), SFVec3f(0.0, 0.0, 0.0));
    ExpectBitwise(SFVec3f(0.0, 3.0, 0.0).Scale(2.0), SFVec3f(0.0, 2.0, 0.0));
}

TEST(SFVec3fCompare, ExactEqualityAndUnorderedResultsOfTheOrderings) {
    const SFVec3f v(3.0, 0.0, 4.0);
    EXPECT_TRUE(v != SFVec3f(3.0, 0.0, std::nextafter(4.0, 5.0)));
    // A NaN component equals anything.
    EXPECT_TRUE(SFVec3f(kNaN, 0.0, 4.0) == v && !(SFVec3f(kNaN, 0.0, 4.0) != v));

    // Against a double the squared length is compared with the double itself.
    EXPECT_FALSE(v < 5.0);
    EXPECT_TRUE(v <= 25.0 && v >= 25.0 && !(v > 25.0));
    EXPECT_TRUE(v < SFVec3f(0.0, 6.0, 0.0) && v >= SFVec3f(5.0, 0.0, 0.0));

    const SFVec3f nan(kNaN, 0.0, 0.0);
    EXPECT_TRUE(!(nan < v) && !(nan <= v) && nan > v && nan >= v);
    EXPECT_TRUE(nan < 1.0 && nan <= 1.0 && !(nan > 1.0) && !(nan >= 1.0));
    // Const vectors compare as vectors, never through the packed colour.
    const SFVec3f small(0.1, 0.0, 0.0), large(0.2, 0.0, 0.0);
    EXPECT_TRUE(small < large && small != large);
}

TEST(SFVec3fQuirks, KeptOddRulesOfTheAccessorsAndSelectors) {
    SFVec3f v(1.0, 2.0, 3.0);
    v.SetXZ(SFVec2f(7.0, 8.0));
    v.X(5.0);
    v.Blue(5.0);
    ExpectBitwise(v, SFVec3f(1.0, 7.0, 8.0));

    const SFVec3f mixed(2.0, -3.0, 1.0);
    // |x| against y itself.
    EXPECT_TRUE(mixed.GreatestScalar() == 2.0 && mixed.GreatestScalarIndex() == 1);
    EXPECT_EQ(SFVec3f(1.0, 1.0, 5.0).SmallestScalar(), 5.0);

    EXPECT_TRUE(SFVec3f(0.0, 0.0, 7.0).IsNormalLinear() &&
                !SFVec3f(0.0, 1.0, 7.0).IsNormalLinear());
    EXPECT_EQ(SFVec3f(kNaN, -0.0, 7.0).Zeros(), 2); // NaN counts as a zero
    EXPECT_TRUE(SFVec3f(1.0, HUGE_VAL, 0.0).IsNaN());
    // Angle is the logarithm of a closed formula whose product leaves z out: 0 for parallel
    // vectors in z = 0, NaN for parallel vectors along z.
    EXPECT_EQ(SFVec3f(1.0, 0.0, 0.0).Angle(SFVec3f(2.0, 0.0, 0.0)), 0.0);
    EXPECT_TRUE(std::isnan(SFVec3f(0.0, 0.0, 1.0).Angle(SFVec3f(0.0, 0.0, 2.0))));

    // Only values below zero are negated: -0.0 keeps its sign, and Signs of it is 1.
    SFVec3f signs(-2.0, -0.0, 3.0);
    EXPECT_TRUE(std::signbit(signs.Absolute().y));
    EXPECT_EQ(signs.x, 2.0);
    ExpectBitwise(SFVec3f(-2.0, -0.0, kNaN).Signs(), SFVec3f(-1.0, 1.0, 1.0));
    ExpectBitwise(SFVec3f(-0.25, 1.5, 2.0).FractionalComponent(), SFVec3f(0.75, 0.5, 0.0));
    EXPECT_EQ(Bits(SFVec3f(1.0, 0.0, 0.0).AngleToRadian().x), 0x3F91DF46A0000000ull);

    // Ties and NaN take v's component; signed zeros show which side a tie took.
    const SFVec3f mine(0.0, kNaN, 1.0);
    const SFVec3f theirs(-0.0, 2.0, kNaN);
    for (const SFVec3f& r : {mine.Minimums(theirs), mine.Maximums(theirs)}) {
        EXPECT_TRUE(std::signbit(r.x) && r.y == 2.0 && std::isnan(r.z));
    }
}

TEST(SFVec3fConvert, HomogeneousRulesAndPolarPlanes) {
    ExpectBitwise(SFVec3f(SFVec2f(2.0, 3.0)), SFVec3f(2.0, 3.0, 1.0));
    ExpectBitwise(SFVec3f(SFVec4f(2.0, 4.0, 6.0, 2.0), true), SFVec3f(1.0, 2.0, 3.0));
    ExpectBitwise(SFVec3f(SFVec4f(2.0, 4.0, 6.0, 0.0), true), SFVec3f(2.0, 4.0, 6.0));

    // Angle 0: the cosine term alone shows where each plane puts it.
    ExpectBitwise(SFVec3f(SFVec3f::kXYPlane, 2.0, 0.0), SFVec3f(2.0, 0.0, 0.0));
    ExpectBitwise(SFVec3f(SFVec3f::kYZPlane, 2.0, 0.0), SFVec3f(0.0, 0.0, 2.0));
    ExpectBitwise(SFVec3f(SFVec3f::kXZPlane, 2.0, 0.0), SFVec3f(2.0, 0.0, 0.0));
    EXPECT_EQ(SFVec3f(SFVec3f::kXZPlane, 2.0, std::acos(0.0)).z, 2.0);
    try {
        SFVec3f(static_cast<SFVec3f::K2DPlane>(3), 1.0, 0.0);
        FAIL() << "no exception for plane 3";
    } catch (const CZqMathException& e) {
        EXPECT_EQ(e.ErrNum(), 9);
    }
}

TEST(SFVec3fSpline, CatmullRomThroughInnerPointsEvenWhenAliased) {
    const SFVec3f p0(-1.0, 5.0, 2.0), p1(0.5, 1.0, -3.0), p2(4.0, 2.0, 7.0), p3(9.0, -6.0, 1.0);
    SFVec3f r;
    ExpectBitwise(r.Spline(0.0, p0, p1, p2, p3), p1);
    ExpectBitwise(r.Spline(1.0, p0, p1, p2, p3), p2);
    // Half way the Catmull-Rom point is (-p0 + 9 p1 + 9 p2 - p3) / 16.
    EXPECT_EQ(r.Spline(0.5, p0, p1, p2, p3), (p1 + p2) * (9.0 / 16.0) - (p0 + p3) / 16.0);
    // The vector may be one of its own control points.
    SFVec3f alias = p1;
    alias.Spline(0.3, p0, alias, p2, p3);
    ExpectBitwise(alias, SFVec3f().Spline(0.3, p0, p1, p2, p3));
}
