// quat_kernel.h: the single-precision quaternion kernel behind CQuat.
#ifndef ZQMATH_QUAT_KERNEL_H
#define ZQMATH_QUAT_KERNEL_H

namespace zq::detail {

/// A quaternion (x, y, z, w) in single precision. Every CQuat operation rounds its operands to
/// this form and widens the result: callers depend on the single-precision values.
struct FQuat {
    float x;
    float y;
    float z;
    float w;
};

/// The rotation by angle about axis (normalised; a near-zero axis becomes zero).
FQuat QuatFromAxisAngle(float ax, float ay, float az, float angle);
/// Yaw about y, pitch about x, roll about z.
FQuat QuatFromYawPitchRoll(float yaw, float pitch, float roll);
/// The rotation a followed by b.
FQuat QuatMultiply(const FQuat& a, const FQuat& b);
/// q scaled to unit length; a near-unit q is kept, a near-zero one becomes zero.
FQuat QuatNormalize(const FQuat& q);
/// The conjugate divided by the squared length; a near-zero q becomes zero.
FQuat QuatInverse(const FQuat& q);
FQuat QuatLn(const FQuat& q);
FQuat QuatExp(const FQuat& q);
/// Spherical interpolation along the shorter arc, linear when a and b are nearly parallel.
FQuat QuatSlerp(const FQuat& a, const FQuat& b, float t);
/// slerp(slerp(q1, c, t), slerp(a, b, t), 2t(1 − t)).
FQuat QuatSquad(const FQuat& q1, const FQuat& a, const FQuat& b, const FQuat& c, float t);
/// The barycentric blend of q1, q2, q3 with weights f and g.
FQuat QuatBaryCentric(const FQuat& q1, const FQuat& q2, const FQuat& q3, float f, float g);
/// The unit axis (into axis[0..2]) and the angle of q; (1, 0, 0) and 0 for a near-zero q.
void QuatToAxisAngle(const FQuat& q, float* axis, float& angle);
/// The row-major 4x4 rotation of q, in the row-vector convention of SFMatrix.
void QuatToMatrix(const FQuat& q, float* m);
/// The quaternion of the upper 3x3 of the row-major 4x4 m.
FQuat QuatFromMatrix(const float* m);

} // namespace zq::detail

#endif
