// The 4D vector: RGBA packing, projection, its twin orderings and the view-volume clipping.
#include <zqmath.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

/// The part [t0, t1] of the segment a-b inside the volume, by intersecting its parameter range
/// with the four half-spaces x >= -a z/2, x <= a z/2, y >= -b z/2, y <= b z/2 in long double.
struct Interval {
    long double t0 = 0.0L;
    long double t1 = 1.0L;
};

Interval InsidePart(const SFVec4f& p, const SFVec4f& q, double a, double b) {
    const long double ha = a / 2.0L, hb = b / 2.0L;
    const long double fp[4] = {p.x + ha * p.z, ha * p.z - p.x, p.y + hb * p.z, hb * p.z - p.y};
    const long double fq[4] = {q.x + ha * q.z, ha * q.z - q.x, q.y + hb * q.z, hb * q.z - q.y};
    Interval in;
    for (int i = 0; i < 4; ++i) {
        if (fp[i] < 0 && fq[i] < 0) {
            return {1.0L, 0.0L};
        }
        const long double t = fp[i] / (fp[i] - fq[i]);
        if (fp[i] < 0) {
            in.t0 = std::max(in.t0, t);
        } else if (fq[i] < 0) {
            in.t1 = std::min(in.t1, t);
        }
    }
    return in;
}

void ExpectAt(const SFVec4f& v, const SFVec4f& p, const SFVec4f& q, long double t) {
    for (unsigned long i = 0; i < 4; ++i) {
        EXPECT_NEAR(v[i], static_cast<double>(p[i] + t * (q[i] - p[i])), 1e-9) << i;
    }
}

} // namespace

TEST(SFVec4fColour, QuarterByteScaleAnd32BitPacking) {
    const SFVec4f c(0xFF000080ul);
    EXPECT_EQ(c, SFVec4f(0.5, 0.0, 0.0, 0.99609375));
    EXPECT_EQ(static_cast<unsigned long>(c), 0xFE00007Ful); // 255 does not come back
    // w's bits above 8 fall off; nothing appears above bit 31 even with a 64-bit long.
    EXPECT_EQ(static_cast<unsigned long>(SFVec4f(0.0, 0.0, 1.0, 2.0)), 0xFEFF0000ul);
    EXPECT_EQ(static_cast<unsigned long>(SFVec4f(0.0, 0.0, 0.0, -1.0)), 0x01000000ul);
    EXPECT_EQ(static_cast<unsigned long>(SFVec4f(-1.0, 0.0, 0.0, 12345678.9)), 0x97000001ul);
    if (sizeof(unsigned long) > 4) {
        const unsigned long high = static_cast<unsigned long>(0x7Fu) << 31 << 1;
        EXPECT_EQ(SFVec4f(high | 0x80ul), SFVec4f(0.5, 0.0, 0.0, 0.0));
    }
}

TEST(SFVec4fBasics, DefaultsProjectionIndexingAndTwinOrderings) {
    EXPECT_EQ(SFVec4f(), SFVec4f(0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(SFVec4f(SFVec3f(1.0, 2.0, 3.0)), SFVec4f(1.0, 2.0, 3.0, 1.0));
    EXPECT_EQ(SFVec4f(2.0, 4.0, 6.0, 2.0).Project(), SFVec3f(1.0, 2.0, 3.0));
    EXPECT_EQ(SFVec4f(2.0, 4.0, 6.0, 0.0).Project(), SFVec3f(2.0, 4.0, 6.0));
    SFVec4f v(1.0, 2.0, 3.0, 4.0);
    v[7] = 9.0;
    EXPECT_EQ(v.w, 9.0);
    // Exact equality, unlike the 2D vector.
    EXPECT_NE(SFVec4f(1.0, 0.0, 0.0, 0.0), SFVec4f(1.000001, 0.0, 0.0, 0.0));

    const SFVec4f a(1.0, 0.0, 0.0, 0.0), b(2.0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(a < b && a > b && !(b > a)); // > is the same test as <
}

TEST(SFVec4fClip, OutcodesOfTheViewRectangleMatchTheThreeDimensionalOnes) {
    const SFVec4f any;
    EXPECT_EQ(any.ClipCode(SFVec4f(-3.0, 0.0, 4.0, 1.0), 1.0, 1.0), 1);
    EXPECT_EQ(any.ClipCode(SFVec4f(0.0, -3.0, 4.0, 1.0), 1.0, 1.0), 8);
    EXPECT_EQ(any.ClipCode(SFVec4f(2.0, 2.0, 4.0, 1.0), 1.0, 1.0), 0); // on the boundary
    EXPECT_EQ(any.ClipCode(SFVec4f(3.0, 3.0, 4.0, 1.0), 1.0, 1.0), 6);
    EXPECT_EQ(any.ClipCode(SFVec4f(-3.0, -3.0, 4.0, 0.0), 1.0, 1.0), 9);
    for (double y = -3.0; y <= 3.0; y += 0.5) {
        for (double x = -3.0; x <= 3.0; x += 0.5) {
            const SFVec3f p(x, y, -1.5);
            EXPECT_EQ(static_cast<int>(any.ClipCode(SFVec4f(p), 2.0, 0.5)),
                      static_cast<int>(p.ClipCode(2.0, 0.5)));
        }
    }
}

TEST(SFVec4fClip, ClipVectorMatchesParametricOracleAndEndsInside) {
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> coord(-3.0, 3.0), depth(-1.0, 4.0), size(0.2, 2.0);
    int kept = 0, rejected = 0;
    for (int n = 0; n < 20000; ++n) {
        const SFVec4f p0(coord(rng), coord(rng), depth(rng), coord(rng));
        const SFVec4f q0(coord(rng), coord(rng), depth(rng), coord(rng));
        const double a = size(rng), b = size(rng);
        SFVec4f pc = p0, qc = q0;
        const bool visible = pc.ClipVector(qc, a, b);
        const Interval in = InsidePart(p0, q0, a, b);
        if (std::fabs(static_cast<double>(in.t1 - in.t0)) < 1e-6) {
            continue; // grazing within rounding: either answer is right
        }
        ASSERT_EQ(visible, in.t0 < in.t1) << n;
        if (!visible) {
            EXPECT_TRUE(pc == p0 && qc == q0); // a rejected segment is left alone
            ++rejected;
            continue;
        }
        ++kept;
        EXPECT_TRUE(pc.ClipCode(pc, a, b) == 0 && qc.ClipCode(qc, a, b) == 0);
        ExpectAt(pc, p0, q0, in.t0);
        ExpectAt(qc, p0, q0, in.t1);
    }
    EXPECT_GT(kept, 1000);
    EXPECT_GT(rejected, 1000);
}

TEST(SFVec4fClip, ClipVectorEndsOnDegenerateSegments) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // Corners, an edge of the volume, the apex, behind the eye, overflow, NaN.
    const SFVec4f cases[][2] = {
        {{-5.0, -5.0, 1.0, 1.0}, {5.0, 5.0, 1.0, 1.0}},
        {{-1.0, -1.0, 1.0, 1.0}, {-3.0, -3.0, 3.0, 1.0}},
        {{0.0, 0.0, 0.0, 1.0}, {0.0, 0.0, 0.0, 1.0}},
        {{1.0, 1.0, -2.0, 1.0}, {-1.0, 0.5, 3.0, 1.0}},
        {{-1e300, 1e300, 1e-300, 1.0}, {1e300, -1e300, 1.0, 1.0}},
        {{nan, 0.0, 1.0, 1.0}, {-9.0, 0.0, 1.0, 1.0}},
    };
    for (const auto& c : cases) {
        SFVec4f p = c[0], q = c[1];
        if (p.ClipVector(q, 2.0, 2.0)) {
            EXPECT_TRUE(p.ClipCode(p, 2.0, 2.0) == 0 && q.ClipCode(q, 2.0, 2.0) == 0);
        }
    }
}
