// rotation_detail.h: rotation builders shared by the transform classes.
#ifndef ZQMATH_ROTATION_DETAIL_H
#define ZQMATH_ROTATION_DETAIL_H

#include "sfmatrix.h"
#include "sfvec3f.h"

class CQuat;

namespace zq::detail {

/// The 3x3 rotation (row-major into e) about axis, taken as it is, from the cosine c and sine s
/// of the angle: e[0][1] = x·y·t − z·s with t = 1 − c, the textbook column-vector form.
void AxisRotation(const SFVec3f& axis, double c, double s, double* e);

/// The rotation about axis (normalised unless its length is exactly 0.0 or 1.0) by angle, built
/// from cos(-angle) and sin(-angle): with row vectors a positive angle turns y toward z about x.
SFMatrix RuleRotation(const SFVec3f& axis, double angle);

/// The 3x3 rotation (row-major into e) of quaternion q with the factor s (2 / |q|² for a unit
/// rotation): e[0][1] = xy − wz, the column-vector form.
void QuaternionRotation(const CQuat& q, double s, double* e);

} // namespace zq::detail

#endif
