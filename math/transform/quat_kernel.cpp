// The single-precision quaternion kernel behind CQuat.
#include "transform/quat_kernel.h"

#include "transform/float_trig.h"

#include <cmath>

namespace zq::detail {

namespace {

/// The kernel's tolerance.
constexpr float kEpsilon = 1e-5f;
/// The kernel's tiny bound: the float just below 1e-10f, the value callers have always seen.
constexpr float kTiny = 9.9999994e-11f;

bool NearZero(float v) {
    return -kEpsilon < v && v < kEpsilon;
}

bool NearOne(float v) {
    return NearZero(v - 1.0f);
}

/// x² + y² + z² + w².
float Norm(const FQuat& q) {
    return q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
}

FQuat Scaled(const FQuat& q, float f) {
    return FQuat{q.x * f, q.y * f, q.z * f, q.w * f};
}

} // namespace

FQuat QuatFromAxisAngle(float ax, float ay, float az, float angle) {
    const float lengthSquared = ax * ax + ay * ay + az * az;
    if (!NearOne(lengthSquared)) {
        if (lengthSquared <= kTiny) {
            ax = ay = az = 0.0f;
        } else {
            const float length = std::sqrt(lengthSquared);
            ax /= length;
            ay /= length;
            az /= length;
        }
    }
    const float half = angle * 0.5f;
    const float s = Sin(half);
    return FQuat{ax * s, ay * s, az * s, Cos(half)};
}

FQuat QuatFromYawPitchRoll(float yaw, float pitch, float roll) {
    const float halfYaw = yaw * 0.5f;
    const float halfPitch = pitch * 0.5f;
    const float halfRoll = roll * 0.5f;
    const float s1 = Sin(halfYaw);
    const float c1 = Cos(halfYaw);
    const float s2 = Sin(halfPitch);
    const float c2 = Cos(halfPitch);
    const float s3 = Sin(halfRoll);
    const float c3 = Cos(halfRoll);
    return FQuat{c3 * c1 * s2 + s1 * c2 * s3, s1 * c2 * c3 - c1 * s2 * s3,
                 c1 * c2 * s3 - s1 * s2 * c3, s1 * s2 * s3 + c1 * c2 * c3};
}

FQuat QuatMultiply(const FQuat& a, const FQuat& b) {
    return FQuat{b.w * a.x + b.x * a.w + b.y * a.z - b.z * a.y,
                 b.w * a.y - b.x * a.z + b.y * a.w + b.z * a.x,
                 b.w * a.z + b.x * a.y - b.y * a.x + b.z * a.w,
                 b.w * a.w - b.x * a.x - b.y * a.y - b.z * a.z};
}

FQuat QuatNormalize(const FQuat& q) {
    const float n = Norm(q);
    if (NearOne(n)) {
        return q;
    }
    if (n <= kTiny) {
        return FQuat{0.0f, 0.0f, 0.0f, 0.0f};
    }
    const float length = std::sqrt(n);
    return FQuat{q.x / length, q.y / length, q.z / length, q.w / length};
}

FQuat QuatInverse(const FQuat& q) {
    const float n = Norm(q);
    if (n <= kTiny) {
        return FQuat{0.0f, 0.0f, 0.0f, 0.0f};
    }
    const FQuat conjugate{-q.x, -q.y, -q.z, q.w};
    if (NearOne(n)) {
        return conjugate;
    }
    return Scaled(conjugate, 1.0f / n);
}

FQuat QuatLn(const FQuat& q) {
    if (q.w < 1.0f) {
        const float theta = Acos(q.w);
        const float s = Sin(theta);
        if (!NearZero(s)) {
            return FQuat{q.x * theta / s, q.y * theta / s, q.z * theta / s, 0.0f};
        }
    }
    return FQuat{q.x, q.y, q.z, 0.0f};
}

FQuat QuatExp(const FQuat& q) {
    const float theta = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    const float s = Sin(theta);
    const float w = Cos(theta);
    if (NearZero(s)) {
        return FQuat{q.x, q.y, q.z, w};
    }
    return FQuat{q.x * s / theta, q.y * s / theta, q.z * s / theta, w};
}

FQuat QuatSlerp(const FQuat& a, const FQuat& b, float t) {
    float k0 = 1.0f - t;
    float k1 = t;
    // The dot's products are taken in double; the kernel keeps the single-precision result.
    const float d =
        static_cast<float>(static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y +
                           static_cast<double>(a.z) * b.z + static_cast<double>(a.w) * b.w);
    // The shorter arc: b's weight changes sign when the two point apart.
    const float sign = d >= 0.0f ? 1.0f : -1.0f;
    const float c = d * sign;
    if (1.0f - c > kEpsilon) {
        const float s = std::sqrt(1.0f - c * c);
        const float theta = Atan2(s, c);
        float sin0;
        float sin1;
        Sines((1.0f - t) * theta, t * theta, sin0, sin1);
        k0 = sin0 / s;
        k1 = sin1 / s;
    }
    // Nearly parallel quaternions keep the linear weights; the result is not renormalised.
    k1 *= sign;
    return FQuat{k0 * a.x + k1 * b.x, k0 * a.y + k1 * b.y, k0 * a.z + k1 * b.z,
                 k0 * a.w + k1 * b.w};
}

FQuat QuatSquad(const FQuat& q1, const FQuat& a, const FQuat& b, const FQuat& c, float t) {
    const FQuat u = QuatSlerp(q1, c, t);
    const FQuat v = QuatSlerp(a, b, t);
    return QuatSlerp(u, v, 2.0f * t * (1.0f - t));
}

FQuat QuatBaryCentric(const FQuat& q1, const FQuat& q2, const FQuat& q3, float f, float g) {
    const float s = f + g;
    if (NearZero(s)) {
        return q1;
    }
    const FQuat u = QuatSlerp(q1, q2, s);
    const FQuat v = QuatSlerp(q1, q3, s);
    return QuatSlerp(u, v, g / s);
}

void QuatToAxisAngle(const FQuat& q, float* axis, float& angle) {
    const float n = Norm(q);
    if (n <= kTiny) {
        axis[0] = 1.0f;
        axis[1] = 0.0f;
        axis[2] = 0.0f;
        angle = 0.0f;
        return;
    }
    // w is not normalised: only the axis is divided by the length.
    const float length = std::sqrt(n);
    axis[0] = q.x / length;
    axis[1] = q.y / length;
    axis[2] = q.z / length;
    angle = 2.0f * Acos(q.w);
}

void QuatToMatrix(const FQuat& q, float* m) {
    const float X = 2.0f * q.x;
    const float Y = 2.0f * q.y;
    const float Z = 2.0f * q.z;
    // The transpose of SFMatrix(CQuat*): both conventions are kept for callers.
    const float rows[16] = {1.0f - Y * q.y - Z * q.z,
                            Y * q.x + Z * q.w,
                            Z * q.x - Y * q.w,
                            0.0f,
                            Y * q.x - Z * q.w,
                            1.0f - X * q.x - Z * q.z,
                            Z * q.y + X * q.w,
                            0.0f,
                            Z * q.x + Y * q.w,
                            Z * q.y - X * q.w,
                            (1.0f - X * q.x) - Y * q.y,
                            0.0f,
                            0.0f,
                            0.0f,
                            0.0f,
                            1.0f};
    for (int i = 0; i < 16; ++i) {
        m[i] = rows[i];
    }
}

FQuat QuatFromMatrix(const float* m) {
    const auto e = [m](int r, int c) { return m[4 * r + c]; };
    const float trace = e(0, 0) + e(1, 1) + e(2, 2);
    if (trace > 0.0f) {
        const float w = std::sqrt(trace + 1.0f) * 0.5f;
        const float r = 0.25f / w;
        return FQuat{(e(1, 2) - e(2, 1)) * r, (e(2, 0) - e(0, 2)) * r, (e(0, 1) - e(1, 0)) * r, w};
    }
    const float d[3] = {e(0, 0) - e(1, 1) - e(2, 2), e(1, 1) - e(0, 0) - e(2, 2),
                        e(2, 2) - (e(1, 1) + e(0, 0))};
    int i = d[0] >= d[1] ? 0 : 1;
    if (!(d[i] >= d[2])) {
        i = 2;
    }
    const int j = (i + 1) % 3;
    const int k = (j + 1) % 3;
    float v[3];
    v[i] = std::sqrt(d[i] + 1.0f) * 0.5f;
    const float r = 0.25f / v[i];
    v[j] = (e(i, j) + e(j, i)) * r;
    v[k] = (e(i, k) + e(k, i)) * r;
    return FQuat{v[0], v[1], v[2], (e(j, k) - e(k, j)) * r};
}

} // namespace zq::detail
