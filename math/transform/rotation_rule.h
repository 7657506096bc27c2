// rotation_rule.h: the axis-angle rotation rule shared by SFMatrix and SFRotation.
#ifndef ZQMATH_ROTATION_RULE_H
#define ZQMATH_ROTATION_RULE_H

#include "sfmatrix.h"
#include "sfvec3f.h"

namespace zq::detail {

/// The rotation about axis (normalised unless its length is exactly 0.0 or 1.0) by angle, built
/// from cos(-angle) and sin(-angle): with row vectors a positive angle turns y toward z about x.
SFMatrix RuleRotation(const SFVec3f& axis, double angle);

} // namespace zq::detail

#endif
