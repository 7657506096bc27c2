// The fast kernels against plain one-at-a-time forms of the same arithmetic, bit for bit, over
// generated inputs: ordinary, tiny, huge, infinite, NaN and signed-zero values, and singular,
// sparse and permuted matrices. Two NaNs count as equal whatever their payloads and signs: which
// operand's payload an IEEE operation passes on is not part of any result the library promises.
#include "transform/float_trig.h"

#include <c3rregion.h>
#include <cquat.h>
#include <sfmatrix.h>
#include <sfvec4f.h>
#include <zqexception.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

// Under the sanitizers every load is checked: an eighth of the inputs keeps the run short.
#if defined(__SANITIZE_ADDRESS__)
constexpr int kScale = 8;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr int kScale = 8;
#else
constexpr int kScale = 1;
#endif
#else
constexpr int kScale = 1;
#endif

constexpr int kMatrices = 1000000 / kScale;
constexpr int kPoints = 2000000 / kScale;

/// from's bits read as a To of the same size.
template <typename To, typename From>
To BitCast(From from) {
    static_assert(sizeof(To) == sizeof(From), "same size");
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

std::uint64_t Bits(double v) {
    return BitCast<std::uint64_t>(v);
}

/// Equal bit patterns, or both NaN.
bool Same(double a, double b) {
    return Bits(a) == Bits(b) || (std::isnan(a) && std::isnan(b));
}

std::string Hex(double v) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%016llx", static_cast<unsigned long long>(Bits(v)));
    return text;
}

::testing::AssertionResult SameArrays(const double* got, const double* want, int n) {
    for (int i = 0; i < n; ++i) {
        if (!Same(got[i], want[i])) {
            return ::testing::AssertionFailure()
                   << "element " << i << ": " << got[i] << " (" << Hex(got[i]) << "), want "
                   << want[i] << " (" << Hex(want[i]) << ")";
        }
    }
    return ::testing::AssertionSuccess();
}

/// Values of every kind, ordinary ones most often; about one in eight is exactly 0.0, -0.0 or
/// 1.0, so that the exact tests of the kernels take both ways.
class Values {
public:
    explicit Values(std::uint64_t seed) : m_random(seed) {}

    double Next() {
        const double inf = std::numeric_limits<double>::infinity();
        switch (Pick(40)) {
        case 0:
            return 0.0;
        case 1:
            return -0.0;
        case 2:
        case 3:
            return 1.0;
        case 4:
            return -1.0;
        case 5:
            return std::ldexp(Uniform(), -1060); // subnormal
        case 6:
            return std::ldexp(Uniform(), -500);
        case 7:
            return std::ldexp(Uniform(), 1000);
        case 8:
            return Pick(2) == 0 ? inf : -inf;
        case 9:
            return std::numeric_limits<double>::quiet_NaN();
        case 10:
            return static_cast<double>(static_cast<int>(Pick(7)) - 3); // small integers
        default:
            return Uniform() * 10.0;
        }
    }

    /// A value in [-1, 1).
    double Uniform() { return std::uniform_real_distribution<double>(-1.0, 1.0)(m_random); }

    unsigned Pick(unsigned n) { return static_cast<unsigned>(m_random() % n); }

    /// Mostly ordinary values with the odd special one: the shape of real transforms.
    double Mostly() { return Pick(8) == 0 ? Next() : Uniform() * 4.0; }

private:
    std::mt19937_64 m_random;
};

/// Dense, sparse (exact zeros that skip row updates), affine, permuted, singular (a zero row,
/// a zero column, two equal rows) and wholly special matrices, in turn.
SFMatrix Generated(Values& v, int kind) {
    SFMatrix m;
    for (int i = 0; i < 16; ++i) {
        m[i] = v.Mostly();
    }
    switch (kind % 8) {
    case 1:
        for (int i = 0; i < 16; ++i) {
            if (v.Pick(2) == 0) {
                m[i] = v.Pick(3) == 0 ? -0.0 : 0.0;
            }
        }
        break;
    case 2:
        m[3] = m[7] = m[11] = 0.0;
        m[15] = 1.0;
        break;
    case 3: {
        m.Zero();
        const int order[4][4] = {{1, 0, 3, 2}, {2, 3, 0, 1}, {3, 2, 1, 0}, {0, 2, 1, 3}};
        for (int r = 0; r < 4; ++r) {
            m[4 * r + order[v.Pick(4)][r]] = v.Uniform() * 3.0;
        }
        break;
    }
    case 4:
        m[4 * v.Pick(4) + 0] = m[4 * v.Pick(4) + 1] = 0.0;
        for (int c = 0; c < 4; ++c) {
            m[4 * v.Pick(4) + c] = 0.0;
        }
        break;
    case 5:
        for (int c = 0; c < 4; ++c) {
            m[4 * c + v.Pick(4)] = 0.0;
        }
        break;
    case 6:
        for (int c = 0; c < 4; ++c) {
            m[4 + c] = m[c];
        }
        break;
    case 7:
        for (int i = 0; i < 16; ++i) {
            m[i] = v.Next();
        }
        break;
    default:
        break;
    }
    return m;
}

// The one-at-a-time forms, each element computed on its own in the order the library's rules
// give.

void ReferenceInvert(const SFMatrix& source, double* out) {
    double m[16];
    double t[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (int i = 0; i < 16; ++i) {
        m[i] = source[i];
    }
    for (int i = 0; i < 4; ++i) {
        const double r = 1.0 / m[4 * i + i];
        for (int c = 0; c < 4; ++c) {
            m[4 * i + c] *= r;
            t[4 * i + c] *= r;
        }
        for (int j = 0; j < 4; ++j) {
            const double f = m[4 * j + i];
            if (j != i && f != 0.0) {
                for (int c = 0; c < 4; ++c) {
                    m[4 * j + c] -= f * m[4 * i + c];
                    t[4 * j + c] -= f * t[4 * i + c];
                }
            }
        }
    }
    std::memcpy(out, t, sizeof t);
}

/// LU decomposition of the transpose with scaled partial pivoting through a permutation
/// vector, then forward and back substitution per unit column; false when singular.
bool ReferenceGeneralInverse(const SFMatrix& s, double* d) {
    const int n = 4;
    double w[16];
    double scale[4];
    int perm[4];
    for (int i = 0; i < n; ++i) {
        double largest = 0.0;
        for (int k = 0; k < n; ++k) {
            w[i * n + k] = s[k * n + i];
            if (std::fabs(w[i * n + k]) > largest) {
                largest = std::fabs(w[i * n + k]);
            }
        }
        if (largest == 0.0) {
            return false;
        }
        scale[i] = 1.0 / largest;
        perm[i] = i;
    }
    for (int k = 0; k + 1 < n; ++k) {
        int best = k;
        double bestSize = std::fabs(w[perm[k] * n + k]) * scale[perm[k]];
        for (int r = k + 1; r < n; ++r) {
            const double size = std::fabs(w[perm[r] * n + k]) * scale[perm[r]];
            if (size > bestSize) {
                best = r;
                bestSize = size;
            }
        }
        if (bestSize == 0.0) {
            return false;
        }
        std::swap(perm[best], perm[k]);
        for (int r = k + 1; r < n; ++r) {
            double* row = w + perm[r] * n;
            const double* pivot = w + perm[k] * n;
            row[k] /= pivot[k];
            if (row[k] != 0.0) {
                for (int c = k + 1; c < n; ++c) {
                    row[c] -= row[k] * pivot[c];
                }
            }
        }
    }
    if (w[perm[n - 1] * n + n - 1] == 0.0) {
        return false;
    }
    for (int j = 0; j < n; ++j) {
        double x[4];
        for (int k = 0; k < n; ++k) {
            double sum = perm[k] == j ? 1.0 : 0.0;
            for (int c = 0; c < k; ++c) {
                sum -= w[perm[k] * n + c] * x[c];
            }
            x[k] = sum;
        }
        for (int k = n - 1; k >= 0; --k) {
            double sum = x[k];
            for (int c = k + 1; c < n; ++c) {
                sum -= w[perm[k] * n + c] * x[c];
            }
            x[k] = sum / w[perm[k] * n + k];
        }
        for (int k = 0; k < n; ++k) {
            d[j * n + k] = x[k];
        }
    }
    return true;
}

/// (x, y, z, w)·m: w exactly 1.0 adds row 3, exactly 0.0 leaves it out.
void ReferenceHomogeneous(const double* m, const double* p, double* out) {
    for (int c = 0; c < 4; ++c) {
        out[c] = p[0] * m[c] + p[1] * m[4 + c] + p[2] * m[8 + c];
        if (p[3] == 1.0) {
            out[c] += m[12 + c];
        } else if (p[3] != 0.0) {
            out[c] += p[3] * m[12 + c];
        }
    }
}

/// (p, 1)·m divided by w unless w is exactly 1.0 or 0.0.
void ReferencePoint(const SFMatrix& m, const SFVec3f& p, double* out) {
    const double in[4] = {p.x, p.y, p.z, 1.0};
    double h[4];
    ReferenceHomogeneous(&m[0], in, h);
    for (int c = 0; c < 3; ++c) {
        out[c] = h[3] != 1.0 && h[3] != 0.0 ? h[c] / h[3] : h[c];
    }
}

double Component(const SFVec3f& p, int c) {
    return c == 0 ? p.x : c == 1 ? p.y : p.z;
}

/// The low 32 bits of v truncated toward zero; 0 for NaN and infinities.
std::uint32_t ReferenceLow32(double v) {
    if (!std::isfinite(v)) {
        return 0;
    }
    double low = std::fmod(std::trunc(v), 4294967296.0);
    if (low < 0.0) {
        low += 4294967296.0;
    }
    return static_cast<std::uint32_t>(low);
}

} // namespace

TEST(KernelBits, InvertAndUntransformPoint) {
    Values v(1);
    for (int n = 0; n < kMatrices; ++n) {
        const SFMatrix m = Generated(v, n);
        SFMatrix inverse(m);
        inverse.Invert();
        double want[16];
        ReferenceInvert(m, want);
        ASSERT_TRUE(SameArrays(&inverse[0], want, 16)) << "Invert, matrix " << n;

        const double p[4] = {v.Mostly(), v.Mostly(), v.Mostly(), n % 3 == 0 ? v.Next() : 1.0};
        double general[16];
        if (!ReferenceGeneralInverse(m, general)) {
            // A throw costs microseconds: one singular matrix in sixteen is enough.
            if (n % 16 == 0) {
                ASSERT_THROW(m.UntransformPoint(SFVec3f(p[0], p[1], p[2])), CZqMathException) << n;
            }
            continue;
        }
        double image[4];
        ReferenceHomogeneous(general, p, image);
        const SFVec4f got = m.UntransformPoint(SFVec4f(p[0], p[1], p[2], p[3]));
        const double got4[4] = {got.x, got.y, got.z, got.w};
        ASSERT_TRUE(SameArrays(got4, image, 4)) << "UntransformPoint, matrix " << n;
    }
}

TEST(KernelBits, MultiplyAndPointTransforms) {
    Values v(2);
    std::vector<SFVec3f> points(1001);
    for (int n = 0; n < kMatrices / 8; ++n) {
        const SFMatrix a = Generated(v, n);
        const SFMatrix b = Generated(v, n + 3);
        SFMatrix product;
        product.Multiply(a, b);
        double want[16];
        for (int i = 0; i < 4; ++i) {
            for (int k = 0; k < 4; ++k) {
                double sum = 0.0;
                for (int j = 0; j < 4; ++j) {
                    sum += b[4 * i + j] * a[4 * j + k];
                }
                want[4 * i + k] = sum;
            }
        }
        ASSERT_TRUE(SameArrays(&product[0], want, 16)) << "Multiply, pair " << n;

        // An odd count, in place, with points whose w is 1, 0 and anything, side by side.
        const int count = static_cast<int>(v.Pick(8)) * 2 + 1;
        for (int i = 0; i < count; ++i) {
            points[i] = SFVec3f(v.Mostly(), v.Mostly(), v.Mostly());
        }
        std::vector<SFVec3f> original(points.begin(), points.begin() + count);
        a.TransformPoints(points.data(), points.data(), static_cast<unsigned long>(count));
        for (int i = 0; i < count; ++i) {
            double image[3];
            ReferencePoint(a, original[i], image);
            const double got[3] = {points[i].x, points[i].y, points[i].z};
            ASSERT_TRUE(SameArrays(got, image, 3)) << "TransformPoints, matrix " << n;
        }
        const double p[4] = {v.Mostly(), v.Mostly(), v.Mostly(), v.Next()};
        double image[4];
        ReferenceHomogeneous(&a[0], p, image);
        const SFVec4f got = a.TransformPoint(SFVec4f(p[0], p[1], p[2], p[3]));
        const double got4[4] = {got.x, got.y, got.z, got.w};
        ASSERT_TRUE(SameArrays(got4, image, 4)) << "TransformPoint, matrix " << n;
    }
}

TEST(KernelBits, NormalizeAndExtendTo) {
    Values v(3);
    C3RRegion box(SFVec3f(0.0, 0.0, 0.0), SFVec3f(0.0, 0.0, 0.0));
    double low[3] = {0.0, 0.0, 0.0};
    double high[3] = {0.0, 0.0, 0.0};
    for (int n = 0; n < kPoints; ++n) {
        const SFVec3f p(v.Next(), v.Next(), v.Next());
        const double length = std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z);
        double want[3] = {p.x, p.y, p.z};
        if (!(length == 0.0 || length == 1.0 || std::isnan(length))) {
            const double f = 1.0 / length;
            for (double& c : want) {
                c *= f;
            }
        }
        const SFVec3f unit = p.Normalize();
        const double got[3] = {unit.x, unit.y, unit.z};
        ASSERT_TRUE(SameArrays(got, want, 3)) << "Normalize, vector " << n;

        // Now and then the box starts again, so that its faces keep moving.
        if (n % 1000 == 0) {
            box = C3RRegion(SFVec3f(0.0, 0.0, 0.0), SFVec3f(0.0, 0.0, 0.0));
            low[0] = low[1] = low[2] = high[0] = high[1] = high[2] = 0.0;
        }
        box.ExtendTo(p);
        for (int c = 0; c < 3; ++c) {
            if (Component(p, c) < low[c]) {
                low[c] = Component(p, c);
            }
            if (Component(p, c) > high[c]) {
                high[c] = Component(p, c);
            }
        }
        const SFVec3f gotLow = box.GetMinPoint();
        const SFVec3f gotHigh = box.GetMaxPoint();
        const double faces[6] = {gotLow.x, gotLow.y, gotLow.z, gotHigh.x, gotHigh.y, gotHigh.z};
        const double wantFaces[6] = {low[0], low[1], low[2], high[0], high[1], high[2]};
        ASSERT_TRUE(SameArrays(faces, wantFaces, 6)) << "ExtendTo, point " << n;
    }
}

TEST(KernelBits, Slerp) {
    Values v(4);
    const float epsilon = 1e-5f;
    const auto trig = [](double (*f)(double), float x) {
        return static_cast<float>(f(static_cast<double>(x)));
    };
    for (int n = 0; n < kMatrices; ++n) {
        // Near-parallel pairs as often as others: the linear weights then apply.
        const CQuat a(v.Mostly(), v.Mostly(), v.Mostly(), v.Mostly());
        const CQuat b = n % 2 == 0 ? CQuat(a.x + v.Uniform() * 1e-3, a.y, -a.z, a.w)
                                   : CQuat(v.Mostly(), v.Mostly(), v.Mostly(), v.Mostly());
        const double t = n % 5 == 0 ? v.Next() : v.Uniform();
        const float fa[4] = {static_cast<float>(a.x), static_cast<float>(a.y),
                             static_cast<float>(a.z), static_cast<float>(a.w)};
        const float fb[4] = {static_cast<float>(b.x), static_cast<float>(b.y),
                             static_cast<float>(b.z), static_cast<float>(b.w)};
        const float ft = static_cast<float>(t);
        float k0 = 1.0f - ft;
        float k1 = ft;
        double dot = 0.0;
        for (int i = 0; i < 4; ++i) {
            dot += static_cast<double>(fa[i]) * static_cast<double>(fb[i]);
        }
        const float d = static_cast<float>(dot);
        const float sign = d >= 0.0f ? 1.0f : -1.0f;
        const float c = d * sign;
        if (1.0f - c > epsilon) {
            const float s = std::sqrt(1.0f - c * c);
            const float theta = static_cast<float>(std::atan2(static_cast<double>(s), c));
            k0 = trig(std::sin, (1.0f - ft) * theta) / s;
            k1 = trig(std::sin, ft * theta) / s;
        }
        k1 *= sign;
        const CQuat r = a.Slerp(b, t);
        const double got[4] = {r.x, r.y, r.z, r.w};
        double want[4];
        for (int i = 0; i < 4; ++i) {
            const float product0 = k0 * fa[i];
            const float product1 = k1 * fb[i];
            want[i] = static_cast<double>(product0 + product1);
        }
        ASSERT_TRUE(SameArrays(got, want, 4)) << "Slerp, pair " << n;
    }
}

std::uint32_t FloatBits(float v) {
    return BitCast<std::uint32_t>(v);
}

// The shortcut sines against the C library's, rounded: any float at all, floats a few ulps
// either side of 0, pi/2 (where the shortcut ends) and pi, rounding boundaries of the result
// near 1, and the special values.
TEST(KernelBits, SinMatchesTheLibrary) {
    std::mt19937_64 random(6);
    const float specials[] = {0.0f,
                              -0.0f,
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN(),
                              std::numeric_limits<float>::denorm_min(),
                              -std::numeric_limits<float>::max()};
    const float centres[] = {0.0f, 1.5707964f, 3.1415927f, 1.0f, 0.5f};
    const int count = 12000000 / kScale;
    float before = 0.0f;
    for (int n = 0; n < count; ++n) {
        float v;
        switch (n % 4) {
        case 0:
            v = BitCast<float>(static_cast<std::uint32_t>(random()));
            break;
        case 1: {
            // Within 2^20 ulps of a centre, either sign.
            const float c = centres[random() % 5];
            const auto step = static_cast<std::uint32_t>(random() % (1u << 20));
            v = BitCast<float>(FloatBits(c) + step) * (random() % 2 == 0 ? 1.0f : -1.0f);
            break;
        }
        case 2:
            v = std::uniform_real_distribution<float>(-1.6f, 1.6f)(random);
            break;
        default:
            v = specials[static_cast<std::size_t>(n / 4) % (sizeof specials / sizeof *specials)];
        }
        // Two at a time: this input beside the one before, so that each lane sees every kind.
        float got[2];
        zq::detail::Sines(v, before, got[0], got[1]);
        const float inputs[2] = {v, before};
        for (int lane = 0; lane < 2; ++lane) {
            const float x = inputs[lane];
            const float want = static_cast<float>(std::sin(static_cast<double>(x)));
            ASSERT_TRUE(FloatBits(got[lane]) == FloatBits(want) ||
                        (std::isnan(got[lane]) && std::isnan(want)))
                << "Sin(" << x << " = 0x" << std::hex << FloatBits(x) << "): " << got[lane]
                << ", want " << want;
        }
        before = v;
    }
}

TEST(KernelBits, EulerOrdersAndHash) {
    Values v(5);
    const int next[4] = {1, 2, 0, 1};
    const int safe[4] = {0, 1, 2, 0};
    for (int n = 0; n < kMatrices / 2; ++n) {
        // Order codes from any double: fractions, negatives, beyond 2^32 and 2^63, NaN.
        double w = static_cast<double>(v.Pick(32)) + (n % 3 == 0 ? 0.9 : 0.0);
        if (n % 7 == 0) {
            w = v.Next() * std::ldexp(1.0, static_cast<int>(v.Pick(80)));
        }
        const SFVec4f input(v.Mostly(), v.Mostly(), v.Mostly(), w);
        SFVec4f ea = input;
        const unsigned code = ReferenceLow32(w);
        const int i = safe[(code >> 3) & 3u];
        const int odd = (code & 4u) != 0 ? 1 : 0;
        const int j = next[i + odd];
        const int k = next[i + 1 - odd];
        if ((code & 1u) != 0) {
            std::swap(ea.x, ea.z);
        }
        if (odd != 0) {
            ea = SFVec4f(-ea.x, -ea.y, -ea.z, ea.w);
        }
        const double ci = std::cos(ea.x), cj = std::cos(ea.y), ch = std::cos(ea.z);
        const double si = std::sin(ea.x), sj = std::sin(ea.y), sh = std::sin(ea.z);
        const double cc = ci * ch, cs = ci * sh, sc = si * ch, ss = si * sh;
        double want[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        const auto e = [&want](int r, int col) -> double& { return want[4 * r + col]; };
        if ((code & 2u) != 0) {
            e(i, i) = cj, e(i, j) = sj * si, e(i, k) = sj * ci;
            e(j, i) = sj * sh, e(j, j) = -cj * ss + cc, e(j, k) = -cj * cs - sc;
            e(k, i) = -sj * ch, e(k, j) = cj * sc + cs, e(k, k) = cj * cc - ss;
        } else {
            e(i, i) = cj * ch, e(i, j) = sj * sc - cs, e(i, k) = sj * cc + ss;
            e(j, i) = cj * sh, e(j, j) = sj * ss + cc, e(j, k) = sj * cs - sc;
            e(k, i) = -sj, e(k, j) = cj * si, e(k, k) = cj * ci;
        }
        SFMatrix m;
        input.Eul_ToSFMatrix(input, m);
        ASSERT_TRUE(SameArrays(&m[0], want, 16)) << "Eul_ToSFMatrix, order " << w;

        const SFMatrix g = Generated(v, n);
        double sum = 0.0;
        for (int x = 0; x < 16; ++x) {
            sum += g[x];
        }
        ASSERT_EQ(g.Hash(), static_cast<long>(static_cast<std::int32_t>(ReferenceLow32(sum))))
            << "Hash, matrix " << n;
    }
}
