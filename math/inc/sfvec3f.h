// sfvec3f.h: the 3D vector, the library's point, direction and colour.
#ifndef ZQMATH_SFVEC3F_H
#define ZQMATH_SFVEC3F_H

#include "sfvec2f.h"
#include "zqexport.h"

class C3Matrix;
class SFVec4f;

/// A 3D point, direction or RGB colour (x, y, z = red, green, blue, nominally 0..1) in double
/// precision. Comparisons are exact; the ordering operators compare squared lengths.
class ZQMATH_API SFVec3f {
public:
    /// A plane for the polar constructor.
    enum K2DPlane : int { kXYPlane = 0, kYZPlane = 1, kXZPlane = 2 };
    /// View-rectangle outcode bits of ClipCode; 0 is inside.
    enum KClipCode3 : int {
        kClipInside = 0,
        kClipLeft = 1,
        kClipRight = 2,
        kClipAbove = 4,
        kClipBelow = 8
    };

    /// Leaves the components uninitialised: deliberately no zeroing.
    SFVec3f() {}
    /// Constant-initialisable, so that the constants are ready before any other initialiser.
    constexpr SFVec3f(const double& initX, const double& initY, const double& initZ)
        : x(initX), y(initY), z(initZ) {}
    SFVec3f(const SFVec3f& v) = default;
    /// Copies v[0], v[1], v[2].
    SFVec3f(double* const v);
    /// (v.x, v.y, 1.0): a homogeneous 2D point.
    SFVec3f(const SFVec2f& v);
    /// (v.x, v.y, v.z); when homogenize is set and w is neither 0.0 nor exactly 1.0, divided by w.
    SFVec3f(const SFVec4f& v, bool homogenize);
    /// Unpacks bytes 0, 1, 2 (0 least significant) scaled by 1/256, not 1/255; byte 3 ignored.
    SFVec3f(const unsigned long& rgb);
    /// Plane 0: (r cos a, r sin a, 0); 1: (0, r sin a, r cos a); 2: (r cos a, 0, r sin a);
    /// any other plane throws record 9. The angle is in radians.
    SFVec3f(SFVec3f::K2DPlane plane, const double& radius, const double& angle);
    SFVec3f& operator=(const SFVec3f& v) = default;

    /// Packs a colour: each component times 255, truncated, low 8 bits (no clamping), x in
    /// bits 0-7, y in 8-15, z in 16-23; bits 24 and up are 0.
    operator unsigned long() const;
    /// Writes "%f %f %f" of x, y, z into buffer (the caller provides the room); returns buffer.
    char* String(char* buffer) const;
    /// out[0..2] = x, y, z rounded to single precision.
    void FloatArray(float* out) const;
    /// Component i: 0 = x, 1 = y, 2 = z; any other index gives z rather than reading past it.
    double& operator[](unsigned long i);
    double operator[](unsigned long i) const;

    double& X();
    double& Y();
    double& Z();
    double X() const;
    double Y() const;
    double Z() const;
    /// The colour names of X, Y, Z.
    double& Red();
    double& Green();
    double& Blue();
    double Red() const;
    double Green() const;
    double Blue() const;
    /// These setters deliberately do nothing (callers set components through the references).
    void X(double) const;
    void Y(double) const;
    void Z(double) const;
    void Red(double) const;
    void Green(double) const;
    void Blue(double) const;
    SFVec2f XY() const;
    SFVec2f YZ() const;
    SFVec2f XZ() const;
    /// x = v.x, y = v.y.
    void SetXY(const SFVec2f& v);
    /// y = v.x, z = v.y.
    void SetYZ(const SFVec2f& v);
    /// y = v.x, z = v.y, exactly as SetYZ: x is never written. Callers depend on it.
    void SetXZ(const SFVec2f& v);

    SFVec3f operator+(const SFVec3f& v) const;
    SFVec3f operator-(const SFVec3f& v) const;
    /// Component-wise product.
    SFVec3f operator*(const SFVec3f& v) const;
    /// Component-wise quotient; division by zero is not checked.
    SFVec3f operator/(const SFVec3f& v) const;
    SFVec3f operator+(const double& d) const;
    SFVec3f operator-(const double& d) const;
    SFVec3f operator*(double s) const;
    SFVec3f operator/(const double& d) const;
    SFVec3f& operator+=(const SFVec3f& v);
    SFVec3f& operator-=(const SFVec3f& v);
    SFVec3f& operator*=(const SFVec3f& v);
    SFVec3f& operator/=(const SFVec3f& v);

    double DotProduct(const SFVec3f& v) const;
    SFVec3f CrossProduct(const SFVec3f& v) const;
    /// this · (a × b).
    double ScalarTripleProduct(const SFVec3f& a, const SFVec3f& b) const;
    /// this * s + a * t.
    SFVec3f Combine(const SFVec3f& a, const double& s, const double& t) const;
    /// (b - this) * t + this, per component.
    SFVec3f LinearInterp(const SFVec3f& b, const double& t) const;
    /// Each component times -1.
    SFVec3f Invert() const;
    /// (1/x, 1/y, 1/z).
    SFVec3f Inverse() const;
    /// (fmod(x, v.x), fmod(y, v.y), fmod(z, v.z)).
    SFVec3f Remainder(const SFVec3f& v) const;
    /// (pow(x, v.x), pow(y, v.y), pow(z, v.z)).
    SFVec3f Power(const SFVec3f& v) const;
    /// Each component minus its floor: -0.25 gives 0.75.
    SFVec3f FractionalComponent() const;
    /// Degrees to radians with the single-precision value of π/180, as callers have always had.
    SFVec3f AngleToRadian() const;
    /// In place: components below 0.0 are negated (-0.0 and NaN are left alone).
    SFVec3f& Absolute();
    /// Per component -1.0 below 0.0, else 1.0.
    SFVec3f Signs() const;
    /// In place: exchanges x and z.
    SFVec3f& ReverseOrder();
    /// Swaps the contents of this and v.
    void Exchange(SFVec3f& v);

    /// The squared length x² + y² + z².
    double Magnitude() const;
    double Length() const;
    /// The unit vector; a length of exactly 0.0 or 1.0 (or NaN) gives an unchanged copy.
    SFVec3f Normalize() const;
    /// Stores Length() in length, then as Normalize().
    SFVec3f Normalize(double& length) const;
    /// Rescaled to the given length; a zero vector is returned unchanged.
    SFVec3f Scale(const double& length) const;
    /// The logarithm of a closed formula over both lengths and the x and y products; NaN for
    /// most pairs. Kept exactly as callers have always had it.
    double Angle(const SFVec3f& v) const;
    /// Exact equality of the three components; a NaN component counts as equal.
    bool operator==(const SFVec3f& v) const;
    bool operator!=(const SFVec3f& v) const;
    /// These four compare the squared lengths; a NaN makes < and <= false, > and >= true.
    bool operator<(const SFVec3f& v) const;
    bool operator>(const SFVec3f& v) const;
    bool operator<=(const SFVec3f& v) const;
    bool operator>=(const SFVec3f& v) const;
    /// These four compare the squared length with d itself (d is not squared); a NaN makes
    /// < and <= true, > and >= false.
    bool operator<(const double& d) const;
    bool operator>(const double& d) const;
    bool operator<=(const double& d) const;
    bool operator>=(const double& d) const;
    /// True when any component is NaN or infinite.
    bool IsNaN() const;
    /// True when at least two components are exactly 0.0 (a NaN counts as 0.0).
    bool IsNormalLinear() const;
    /// The number of components exactly 0.0 (a NaN counts as 0.0).
    short Zeros() const;
    /// The component of greatest magnitude, with its sign; its first test compares |x| with y
    /// itself, not |y|, as callers have always had it.
    double GreatestScalar() const;
    /// The index of the component of greatest magnitude; ties go to the lower index.
    int GreatestScalarIndex() const;
    /// The smallest component by strict tests: a tie between x and y returns z.
    double SmallestScalar() const;
    /// Per component the greater; ties and NaN take v's.
    SFVec3f Maximums(const SFVec3f& v) const;
    /// Per component the smaller; ties and NaN take v's.
    SFVec3f Minimums(const SFVec3f& v) const;

    /// The outcode of this point against a view rectangle of full width a and height b at
    /// depth z: 1 left, 2 right, 8 below, 4 above (left before right, below before above).
    KClipCode3 ClipCode(const double& a, const double& b) const;

    /// Overwrites this with the Catmull-Rom point at t of p0..p3 (p1 at t = 0, p2 at t = 1);
    /// any of p0..p3 may be this vector.
    SFVec3f& Spline(double t, const SFVec3f& p0, const SFVec3f& p1, const SFVec3f& p2,
                    const SFVec3f& p3);

    double x;
    double y;
    double z;

    static const SFVec3f kZero;
    static const SFVec3f kOne;

    /// m times this vector as a column: (e0·x + e1·y + e2·z, e3·x + e4·y + e5·z,
    /// e6·x + e7·y + e8·z) with m's elements e0..e8 row by row. No division.
    SFVec3f MulPointByMatrix(C3Matrix const* m) const;
};

#endif
