// sfvec2f.h: the 2D vector and the planar predicates of the triangulation.
#ifndef ZQMATH_SFVEC2F_H
#define ZQMATH_SFVEC2F_H

#include "zqexport.h"
#include "zqplatform.h"

class C3Matrix;
class SFVec3f;

/// A 2D point or vector in double precision: screen and image coordinates, texture sizes and
/// the sites of the triangulation. Its equality is tolerant (distance below 1e-5).
class ZQMATH_API SFVec2f {
public:
    /// (0, 0): unlike SFVec3f, the default constructor zeroes.
    SFVec2f();
    /// Constant-initialisable, so that the constants are ready before any other initialiser.
    constexpr SFVec2f(double initX, double initY) : x(initX), y(initY) {}
    SFVec2f(const SFVec2f& v) = default;
    /// Copies v[0] and v[1].
    SFVec2f(double* const v);
    /// The framework point, converted to double.
    SFVec2f(const CPoint& p);
    /// (v.x / v.z, v.y / v.z) with no test of v.z when homogenize is set, else (v.x, v.y).
    SFVec2f(const SFVec3f& v, bool homogenize);

    /// Each component truncated toward zero (2.9 gives 2, -2.9 gives -2).
    operator CPoint() const;
    /// Copies; returns nothing, as callers have always had it.
    void operator=(const SFVec2f& v);
    /// x for 0, y for every other index.
    double& operator[](int i);
    double X() const;
    double Y() const;

    SFVec2f operator+(const SFVec2f& v) const;
    SFVec2f operator-(const SFVec2f& v) const;
    /// Component-wise product.
    SFVec2f operator*(const SFVec2f& v) const;
    /// Component-wise quotient; division by zero is not checked.
    SFVec2f operator/(const SFVec2f& v) const;
    SFVec2f operator+(const double& d) const;
    SFVec2f operator-(const double& d) const;
    SFVec2f operator*(const double& d) const;
    SFVec2f operator/(const double& d) const;
    SFVec2f& operator+=(const SFVec2f& v);
    SFVec2f& operator-=(const SFVec2f& v);
    SFVec2f& operator*=(const SFVec2f& v);
    SFVec2f& operator/=(const SFVec2f& v);
    SFVec2f& operator+=(const double& d);
    SFVec2f& operator-=(const double& d);
    SFVec2f& operator*=(const double& d);
    SFVec2f& operator/=(const double& d);

    double DotProduct(const SFVec2f& v) const;
    /// this * s + a * t.
    SFVec2f Combine(const SFVec2f& a, const double& s, const double& t) const;
    /// (b - this) * t + this, per component.
    SFVec2f LinearInterp(const SFVec2f& b, const double& t) const;
    /// (-x, -y).
    SFVec2f Invert() const;
    /// (-y, x): a quarter turn counter-clockwise.
    SFVec2f MakePerpendicular() const;
    /// (fmod(x, v.x), fmod(y, v.y)).
    SFVec2f Remainder(const SFVec2f& v) const;
    /// Per component the smaller; ties and NaN take v's.
    SFVec2f Minimums(const SFVec2f& v) const;
    /// Per component the greater; ties and NaN take v's.
    SFVec2f Maximums(const SFVec2f& v) const;
    /// Swaps the contents of this and v.
    void Exchange(SFVec2f& v);

    /// The squared length x² + y².
    double Magnitude() const;
    /// sqrt(x² + y²).
    double Length() const;
    /// The same as Length().
    double norm() const;
    double DistanceTo(const SFVec2f& v) const;
    /// radius = Length(), angle = atan2(y, x) in radians.
    void Polar(double& radius, double& angle) const;
    /// Divides by the length; a length of exactly 0.0 (or NaN) gives an unchanged copy.
    SFVec2f Normalize() const;
    /// Rescaled to the given length; a zero vector is returned unchanged.
    SFVec2f Scale(const double& length) const;
    /// True when the distance is strictly below 1e-5: deliberately tolerant, unlike SFVec3f.
    bool operator==(const SFVec2f& v) const;
    bool operator!=(const SFVec2f& v) const;

    /// Twice the signed area of a, b, c (positive counter-clockwise), not halved; no epsilon.
    static double TriArea(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c);
    /// 1 when a, b, c turn strictly counter-clockwise, else 0 (collinear gives 0).
    static int ccw(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c);
    /// 1 when d lies strictly inside the circle through a, b, c (counter-clockwise), else 0.
    static int InCircle(const SFVec2f& a, const SFVec2f& b, const SFVec2f& c, const SFVec2f& d);

    /// The exponents of the next powers of two of x and y (as doubles), with the distances to
    /// them in remainder; throws record 8 for a component below 0 or of 2048 or more.
    SFVec2f HarmonicLimits(SFVec2f& remainder) const;
    /// True when x and y are both powers of two (1 to 1024); throws as HarmonicLimits.
    bool IsBinaryHarmonic() const;
    /// Wraps each component beyond ±1 into (-1, 1) by dropping its whole part; ±1 stay.
    void RepeatingIntegralArea();
    /// In place: the cosine and sine of the elevation of a point at horizontal distance
    /// Length() and fixed height 100.
    void EulerAngle();
    /// (x, y, 1) times the rows of m: (u / w, v / w), or (u, v) when w is exactly 0.0.
    SFVec2f MulPointByProjMatrix(C3Matrix* m) const;

    double x;
    double y;

    static const SFVec2f kZero;
    static const SFVec2f kOne;
};

#endif
