// Rotation builders shared by the transform classes.
#include "transform/rotation_detail.h"

#include "cquat.h"

#include <cmath>

namespace zq::detail {

void AxisRotation(const SFVec3f& axis, double c, double s, double* e) {
    const double x = axis.x;
    const double y = axis.y;
    const double z = axis.z;
    const double t = 1.0 - c;
    e[0] = x * x * t + c;
    e[1] = x * y * t - z * s;
    e[2] = x * z * t + y * s;
    e[3] = x * y * t + z * s;
    e[4] = y * y * t + c;
    e[5] = y * z * t - x * s;
    e[6] = x * z * t - y * s;
    e[7] = y * z * t + x * s;
    e[8] = z * z * t + c;
}

SFMatrix RuleRotation(const SFVec3f& axis, double angle) {
    // The angle's sign is flipped before cos and sin: with row vectors this turns y toward z.
    // Unlike SFVec3f::Normalize, a NaN length is applied too: the whole rotation becomes NaN.
    const double length = axis.Length();
    const SFVec3f unit = length == 0.0 || length == 1.0 ? axis : axis * (1.0 / length);
    double e[9];
    AxisRotation(unit, std::cos(-angle), std::sin(-angle), e);
    return SFMatrix(e[0], e[1], e[2], 0.0, e[3], e[4], e[5], 0.0, e[6], e[7], e[8], 0.0, 0.0, 0.0,
                    0.0, 1.0);
}

void QuaternionRotation(const CQuat& q, double s, double* e) {
    const double xs = q.x * s;
    const double ys = q.y * s;
    const double zs = q.z * s;
    const double wx = xs * q.w;
    const double wy = ys * q.w;
    const double wz = zs * q.w;
    const double xx = xs * q.x;
    const double xy = ys * q.x;
    const double xz = zs * q.x;
    const double yy = ys * q.y;
    const double yz = zs * q.y;
    const double zz = zs * q.z;
    e[0] = 1.0 - (yy + zz);
    e[1] = xy - wz;
    e[2] = xz + wy;
    e[3] = xy + wz;
    e[4] = 1.0 - (xx + zz);
    e[5] = yz - wx;
    e[6] = xz - wy;
    e[7] = yz + wx;
    e[8] = 1.0 - (xx + yy);
}

} // namespace zq::detail
