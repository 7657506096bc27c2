// vector_detail.h: small numeric helpers shared by the vector classes.
#ifndef ZQMATH_VECTOR_DETAIL_H
#define ZQMATH_VECTOR_DETAIL_H

#include <cmath>
#include <cstdint>

namespace zq::detail {

/// The low 32 bits of v truncated toward zero, in two's complement; 0 for NaN and infinities.
/// This is what the original's 64-bit integer conversion kept, and it never overflows.
inline std::uint32_t TruncatedLow32(double v) {
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (std::fabs(v) < kTwoTo63) {
        // Exact: the conversion truncates toward zero, the unsigned one keeps the low 32 bits.
        return static_cast<std::uint32_t>(static_cast<std::int64_t>(v));
    }
    if (!std::isfinite(v)) {
        return 0;
    }
    constexpr double kTwoTo32 = 4294967296.0;
    double low = std::fmod(std::trunc(v), kTwoTo32); // exact: an integer of magnitude < 2^32
    if (low < 0.0) {
        low += kTwoTo32;
    }
    return static_cast<std::uint32_t>(low);
}

/// One colour channel: the component times 255, truncated, low 8 bits (no clamping).
inline std::uint32_t PackedChannel(double component) {
    return TruncatedLow32(component * 255.0) & 0xFFu;
}

/// Byte n (0 = least significant) of a packed colour, scaled by 1/256 (not 1/255).
inline double UnpackedChannel(unsigned long packed, int n) {
    return static_cast<double>((packed >> (8 * n)) & 0xFFu) * 0.00390625;
}

/// Component equality in which an unordered pair (a NaN on either side) counts as equal.
inline bool EqualOrUnordered(double a, double b) {
    return !(a < b) && !(a > b);
}

/// a when it is less than b, else b: ties and NaN take b.
inline double LessOrSecond(double a, double b) {
    return a < b ? a : b;
}

/// a when it is greater than b, else b: ties and NaN take b.
inline double GreaterOrSecond(double a, double b) {
    return a > b ? a : b;
}

/// Half of the full extent s of the view rectangle at depth z. Classification and clipping
/// share this one expression, so that a point put on a plane classifies as on it.
inline double HalfExtent(double s, double z) {
    return s * z * 0.5;
}

/// The view-rectangle outcode of (x, y) at depth z: 1 left, 2 right, 8 below, 4 above.
/// Left wins over right, and below over above (above is then not examined); boundaries are
/// inside. The code is a 16-bit value.
inline short ClipCodeOf(double x, double y, double z, double a, double b) {
    const double hx = HalfExtent(a, z);
    const double hy = HalfExtent(b, z);
    short code = 0;
    if (x < -hx) {
        code = 1;
    } else if (x > hx) {
        code = 2;
    }
    if (y < -hy) {
        return static_cast<short>(code | 8);
    }
    if (y > hy) {
        code = static_cast<short>(code | 4);
    }
    return code;
}

} // namespace zq::detail

#endif
