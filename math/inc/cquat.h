// cquat.h: the quaternion and the axis-angle rotation.
#ifndef ZQMATH_CQUAT_H
#define ZQMATH_CQUAT_H

#include "sfmatrix.h"
#include "sfvec3f.h"
#include "zqexport.h"
#include "zqplatform.h"

/// A rotation quaternion (x, y, z, w; w last, indexed 0..3 like SFVec4f). Every operation with
/// arithmetic rounds the components to single precision, computes in single precision and
/// widens the result: callers depend on those values. Angles are radians.
class ZQMATH_API CQuat {
public:
    /// (0, 0, 0, 1).
    CQuat();
    CQuat(double initX, double initY, double initZ, double initW);
    /// The rotation by angle about axis (normalised; a zero axis gives (0, 0, 0, cos(angle/2))).
    CQuat(SFVec3f const& axis, double angle);
    /// Yaw v.x about y, pitch v.y about x, roll v.z about z.
    CQuat(SFVec3f const& v);
    /// The rotation of m's upper 3x3 block, in the convention of RotationMatrix().
    CQuat(SFMatrix const& m);
    /// Copies every field, the further ones included.
    CQuat(CQuat const& q);
    CQuat& operator=(CQuat const& q);

    /// (0, 0, 0, 1); the further fields are not touched.
    void Identity();
    /// this = the rotation a followed by b.
    void Multiply(CQuat const& a, CQuat const& b);
    /// this = (-x, -y, -z, w) of q, with x, y, z rounded to single precision and w kept.
    void Conjugate(CQuat const& q);
    /// this = the inverse of q; zero for a near-zero q.
    void Inverse(CQuat const& q);
    /// this = q at unit length; a near-unit q is only rounded, a near-zero one becomes zero.
    void Normalize(CQuat const& q);
    void Exp(CQuat const& q);
    void Ln(CQuat const& q);
    /// The four-component dot in double with only q.z rounded to single precision, as callers
    /// have always had it.
    double DotProduct(CQuat const& q) const;
    /// The length, in double.
    double Length() const;
    /// The squared length, in double: the square of Length(), kept so for callers.
    double Magnitude() const;
    /// x exactly 0.0 in double, y and z 0 and w 1 in single precision; no other tolerance.
    bool IsIdentity() const;
    /// The row-vector rotation matrix: the transpose of SFMatrix(CQuat*).
    SFMatrix RotationMatrix() const;
    /// Spherical interpolation from this to q at t, along the shorter arc (linear when nearly
    /// parallel, not renormalised).
    CQuat Slerp(CQuat const& q, double t) const;
    /// slerp(slerp(this, c, t), slerp(a, b, t), 2t(1 - t)).
    CQuat Squad(CQuat const& a, CQuat const& b, CQuat const& c, double t) const;
    /// this = the barycentric blend of a, b, c with weights f and g (a when f + g is near 0).
    void BaryCenter(CQuat const& a, CQuat const& b, CQuat const& c, double f, double g);
    /// The unit axis; angle = 2 acos w, with w not normalised. (1, 0, 0) and 0 for a zero q.
    SFVec3f ToAxisAngle(double& angle) const;

    double x;
    double y;
    double z;
    double w;

private:
    // Carried along by copy and assignment; no operation reads them.
    SFVec3f m_vector;
    double m_value;
    SFMatrix m_matrix;
    DWORD m_word;
};

/// A rotation as an axis (not necessarily unit) and an angle in radians.
class ZQMATH_API SFRotation {
public:
    /// Axis (0, 1, 0), angle 0.
    SFRotation();
    SFRotation(double axisX, double axisY, double axisZ, double angle);
    SFRotation(SFVec3f axis, double angle);
    SFRotation(SFRotation const& r);
    SFRotation& operator=(SFRotation const& r);

    double X() const;
    double Y() const;
    double Z() const;
    double Angle() const;
    void Angle(double angle);
    /// These setters deliberately do nothing: the axis cannot be changed through them.
    void X(double) const;
    void Y(double) const;
    void Z(double) const;
    /// The rotation matrix by the rule of SFMatrix::RotateX/Y/Z about the normalised axis.
    SFMatrix Transform() const;
    operator SFMatrix() const;

private:
    double m_axisX;
    double m_axisY;
    double m_axisZ;
    double m_angle;
};

#endif
