// sfvec4f.h: the 4D vector: homogeneous point, RGBA colour, Euler-angle record.
#ifndef ZQMATH_SFVEC4F_H
#define ZQMATH_SFVEC4F_H

#include "sfvec3f.h"
#include "zqexport.h"

class CQuat;
class SFMatrix;

/// Four doubles x, y, z, w, indexed 0 to 3: a homogeneous point, an RGBA colour, or three
/// angles with their order code. Equality is exact.
class ZQMATH_API SFVec4f {
public:
    /// View-rectangle outcode bits of ClipCode; 0 is inside.
    enum KClipCode : int {
        kClipInside = 0,
        kClipLeft = 1,
        kClipRight = 2,
        kClipAbove = 4,
        kClipBelow = 8
    };

    /// (0, 0, 0, 1).
    SFVec4f();
    /// Constant-initialisable, so that the constants are ready before any other initialiser.
    constexpr SFVec4f(double const& initX, double const& initY, double const& initZ,
                      double const& initW)
        : x(initX), y(initY), z(initZ), w(initW) {}
    SFVec4f(SFVec4f const& v) = default;
    /// (v.x, v.y, v.z, 1.0).
    SFVec4f(SFVec3f const& v);
    /// Unpacks bytes 0 to 3 (0 least significant) into x, y, z, w, each scaled by 1/256.
    SFVec4f(unsigned long const& rgba);

    /// Packs x, y, z into bits 0-23 (each times 255, truncated, low 8 bits) and w shifted into
    /// bits 24-31, its higher bits falling off. No clamping, so unpacking and packing again
    /// turns 255 into 254.
    operator unsigned long() const;
    /// out[0..3] = x, y, z, w rounded to single precision.
    void FloatArray(float* const out) const;
    /// The address of x; the four components are contiguous.
    double const* passArray() const;
    /// (x, y, z); w is dropped without division.
    SFVec3f Chop() const;
    /// (x, y, z) / w, or (x, y, z) unchanged when w is exactly 0.0.
    SFVec3f Project() const;
    /// Component i: 0, 1, 2 select x, y, z; every other index selects w.
    double& operator[](unsigned long i);
    double operator[](unsigned long i) const;

    SFVec4f operator+(SFVec4f const& v) const;
    SFVec4f operator-(SFVec4f const& v) const;
    /// Component-wise product.
    SFVec4f operator*(SFVec4f const& v) const;
    /// Component-wise quotient; division by zero is not checked.
    SFVec4f operator/(SFVec4f const& v) const;
    SFVec4f& operator+=(SFVec4f const& v);
    SFVec4f operator+(double const& d) const;
    SFVec4f operator-(double const& d) const;
    SFVec4f operator*(double const& d) const;
    SFVec4f operator/(double const& d) const;
    SFVec4f& operator=(SFVec4f const& v) = default;
    double DotProduct(SFVec4f const& v) const;
    /// The squared length x² + y² + z² + w².
    double Magnitude() const;

    /// Exact equality of all four components.
    bool operator==(SFVec4f const& v) const;
    bool operator!=(SFVec4f const& v) const;
    /// True when v is strictly longer than this vector.
    bool operator<(SFVec4f const& v) const;
    /// Deliberately the same test as operator<: also true when v is longer, so a > b does not
    /// mean b < a. Callers depend on it.
    bool operator>(SFVec4f const& v) const;

    /// The outcode of v (not of this vector) against a view rectangle of full width a and
    /// height b at depth v.z: 1 left, 2 right, 8 below, 4 above; w is not read.
    KClipCode ClipCode(SFVec4f const& v, double const& a, double const& b) const;
    /// Clips the segment from this vector to other against the view volume of ClipCode; false
    /// (both left unchanged) when it lies wholly outside, else true with the clipped end points
    /// written back.
    bool ClipVector(SFVec4f& other, double const& a, double const& b);

    double x;
    double y;
    double z;
    double w;

    static const SFVec4f kZero;
    static const SFVec4f kOne;

    // Euler angles: x, y, z are the angles in radians and w the order code (truncated when
    // read): bit 0 rotating axes, bit 1 first axis repeated, bit 2 odd parity, bits 3-4 the
    // inner axis (0 x, 1 y, 2 z). None of these reads or writes the vector it is called on.
    /// Writes the rotation of ea's angles and order into all sixteen elements of M, in the
    /// column-vector form of SFMatrix(CQuat*) (the transpose of RotateX/Y/Z's form).
    void Eul_ToSFMatrix(SFVec4f ea, SFMatrix& M) const;
    /// The angles of M's upper 3x3 block for order, with w = order.
    SFVec4f Eul_FromSFMatrix(SFMatrix M, int order) const;
    /// The angles of q's rotation matrix for order.
    SFVec4f Eul_FromQuat(CQuat q, int order) const;
    /// The yaw (x), pitch (y), roll (z) quaternion; the order in w is deliberately not read.
    CQuat Eul_ToQuat(SFVec4f ea) const;
};

#endif
