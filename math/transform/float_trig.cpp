// Single-precision trigonometry, taken in double and rounded, so that every platform gets the
// same single-precision values. Sin answers most arguments with a polynomial instead of the C
// library, but only where that cannot change the float it returns.
#include "transform/float_trig.h"

#include "frame/double_pair.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace zq::detail {

namespace {

constexpr double kHalfPi = 0x1.921fb54442d18p+0;

/// sin x in each lane by its Taylor series to x^19, for |x| <= pi/2. The first term left out
/// bounds the truncation by (pi/2)^21 / 21! < 2^-51 of |sin x|; the coefficients and the
/// products and sums add under 2^-49; so the result is within 2^-48 of sin x, relative. The
/// series in z = x^2 is summed in pairs and powers of z, so that its terms are computed side by
/// side rather than one after another.
Pair SinSeries(Pair x) {
    const Pair z = x * x;
    const Pair z2 = z * z;
    const Pair z4 = z2 * z2;
    const Pair a0 = Splat(1.0 / 6.0) - z * Splat(1.0 / 120.0);
    const Pair a1 = Splat(1.0 / 5040.0) - z * Splat(1.0 / 362880.0);
    const Pair a2 = Splat(1.0 / 39916800.0) - z * Splat(1.0 / 6227020800.0);
    const Pair a3 = Splat(1.0 / 1307674368000.0) - z * Splat(1.0 / 355687428096000.0);
    const Pair b0 = a0 + z2 * a1;
    const Pair b1 = a2 + z2 * a3;
    const Pair p = b0 + z4 * (b1 + z4 * Splat(1.0 / 121645100408832000.0));
    return x - x * z * p;
}

/// True when every double within 2^14 ulps of p rounds to the same float as p: 2^9 times the
/// polynomial's bound, and thousands of times any C library's error. In its binade, a double
/// lies halfway between two floats exactly when its 29 low mantissa bits are 2^28; a binade's
/// ends are floats, far from any halfway point. Values that round to a subnormal float (and
/// zero) are left out: their halfway points lie elsewhere.
bool RoundsAlone(double p) {
    std::uint64_t bits;
    std::memcpy(&bits, &p, sizeof bits);
    const auto exponent = static_cast<unsigned>(bits >> 52) & 0x7ffu;
    const auto low = static_cast<std::uint32_t>(bits) & 0x1fffffffu;
    return exponent >= 1023 - 126 && low - ((1u << 28) - (1u << 14)) >= (1u << 15);
}

/// p rounded to float where x is in the series' range and that rounding is safe; the C
/// library's sine of x rounded otherwise.
float Checked(double x, double p) {
    if (std::fabs(x) <= kHalfPi && RoundsAlone(p)) {
        return static_cast<float>(p);
    }
    return static_cast<float>(std::sin(x));
}

} // namespace

void Sines(float a, float b, float& sinA, float& sinB) {
    const double x = a;
    const double y = b;
    // Lanes beyond the series' range compute whatever they compute, unused.
    const Pair p = SinSeries(Lows(Splat(x), Splat(y)));
    sinA = Checked(x, Low(p));
    sinB = Checked(y, High(p));
}

float Sin(float v) {
    float s;
    Sines(v, v, s, s);
    return s;
}

float Cos(float v) {
    return static_cast<float>(std::cos(static_cast<double>(v)));
}

float Acos(float v) {
    return static_cast<float>(std::acos(static_cast<double>(v)));
}

float Atan2(float y, float x) {
    return static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
}

} // namespace zq::detail
