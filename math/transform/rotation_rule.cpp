// The axis-angle rotation rule shared by SFMatrix and SFRotation.
#include "transform/rotation_rule.h"

#include <cmath>

namespace zq::detail {

SFMatrix RuleRotation(const SFVec3f& axis, double angle) {
    const SFVec3f a = axis.Normalize();
    // The angle's sign is flipped before cos and sin: with row vectors this turns y toward z.
    const double c = std::cos(-angle);
    const double s = std::sin(-angle);
    const double t = 1.0 - c;
    return SFMatrix(a.x * a.x * t + c, a.x * a.y * t - a.z * s, a.x * a.z * t + a.y * s, 0.0,
                    a.x * a.y * t + a.z * s, a.y * a.y * t + c, a.y * a.z * t - a.x * s, 0.0,
                    a.x * a.z * t - a.y * s, a.y * a.z * t + a.x * s, a.z * a.z * t + c, 0.0, 0.0,
                    0.0, 0.0, 1.0);
}

} // namespace zq::detail
