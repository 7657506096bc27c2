// sfmatrix.h: the 4x4 transform, its inversion, decomposition and perspective helpers.
#ifndef ZQMATH_SFMATRIX_H
#define ZQMATH_SFMATRIX_H

#include "sfvec2f.h"
#include "sfvec3f.h"
#include "sfvec4f.h"
#include "zqexport.h"

class C3Matrix;
class CQuat;

/// A 4x4 transform of sixteen doubles stored row by row (m[r][c] at index 4r + c). Points are
/// row vectors multiplied on the left, so row 3 is the translation and column 3 the projective
/// terms; rows 0, 1, 2 are the left, up and view vectors. Angles are radians. Products named
/// "B × A" are ordinary row-by-column products, so p·(A × B) applies A first. The axis-angle
/// constructor and every product through PostConcatMatrix round some values to single precision.
class ZQMATH_API SFMatrix {
public:
    /// Leaves the elements unset; call Identity or Zero for a defined value.
    SFMatrix() {}
    SFMatrix(SFMatrix const& other);
    /// The sixteen elements in storage order: the first four are row 0.
    SFMatrix(double e00, double e01, double e02, double e03, double e10, double e11, double e12,
             double e13, double e20, double e21, double e22, double e23, double e30, double e31,
             double e32, double e33);
    /// Widened floats: f[i] into element i when rowMajor is set, else read transposed
    /// (m[r][c] = f[4c + r]).
    SFMatrix(float* f, bool rowMajor);
    /// Rows 0..3 = a, b, c, d in columns 0..2; column 3 = (0, 0, 0, 1).
    SFMatrix(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c, SFVec3f const& d);
    /// Rotation about axis through angle times the axis length, with single-precision
    /// intermediates; for a unit axis it turns the opposite way to RotateX/Y/Z. An axis shorter
    /// than 0.0001 gives the identity.
    SFMatrix(SFVec3f const& axis, double angle);
    /// The rotation of q, the transpose of q->RotationMatrix(). Only the upper 3x3 block is
    /// written: row 3 and column 3 stay unset, as callers expect. A zero q is not guarded.
    SFMatrix(CQuat* q);
    /// The identity with m3's elements, row by row, in the upper 3x3 block.
    SFMatrix(C3Matrix const& m3);
    /// Copies all sixteen; assignment to itself copies nothing.
    SFMatrix& operator=(SFMatrix const& other);
    /// Same as the four-vector constructor.
    void InitializeWith(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c, SFVec3f const& d);

    /// Element i (row i/4, column i%4); no range check.
    double& operator[](int i);
    double const& operator[](int i) const;
    /// Element i; no range check.
    double GetElement(long i) const;
    /// m[r][c]; no range check.
    double& At(short r, short c);
    double ValueAt(short r, short c) const;
    /// Columns 0..2 of row 0, 1, 2 and 3.
    SFVec3f GetLeftVector() const;
    SFVec3f GetUpVector() const;
    SFVec3f GetViewVector() const;
    SFVec3f GetPosition() const;
    /// Overwrite columns 0..2 of row 0, 1, 2 and 3; column 3 is not touched.
    void SetLeftVector(SFVec3f const& v);
    void SetUpVector(SFVec3f const& v);
    void SetViewVector(SFVec3f const& v);
    void SetPosition(SFVec3f const& v);

    SFMatrix& Identity();
    void Zero();
    /// this = B × A, summed directly into this: this must be neither A nor B (not checked).
    void Multiply(SFMatrix const& A, SFMatrix const& B);
    /// A new matrix holding B × this, which the caller deletes.
    SFMatrix* Multiply(SFMatrix const& B) const;
    /// this = B × this through a temporary (B may be this).
    void MultiplyIn(SFMatrix const& B);
    /// B × this: P * Q yields Q × P.
    SFMatrix operator*(SFMatrix const& B) const;
    /// this = this × B through PostConcatMatrix, so this is rounded to single precision.
    void ConcatWith(SFMatrix const& B);
    /// this = A × B with A's elements rounded to single precision; this may be A or B.
    void PostConcatMatrix(SFMatrix const& A, SFMatrix const& B);
    SFMatrix operator+(SFMatrix const& B) const;
    SFMatrix operator-(SFMatrix const& B) const;
    /// 0 at the first strictly different pair, else 1: no tolerance, and NaN equals anything.
    int operator==(SFMatrix const& B) const;
    /// 1 at the first strictly different pair, else 0.
    int operator!=(SFMatrix const& B) const;
    /// The sum of the sixteen elements truncated toward zero (32-bit).
    long Hash() const;

    /// The identity with translation t.
    void Translate(SFVec3f const& t);
    void Translate(double x, double y, double z);
    /// Replaces the translation by t; it does not add to it (callers rely on this).
    void TranslateBy(SFVec3f const& t);
    /// The identity with s on the diagonal.
    void Scale(SFVec3f const& s);
    /// Scales columns 0..2 by s, then adds t to row 3; column 3 is not touched.
    void ScaleBy(SFVec3f const& s, SFVec3f const& t);
    /// Rows 0, 1, 2 (all four columns) times sx, sy, sz; row 3 is not touched.
    void PostScale(double const& sx, double const& sy, double const& sz);
    /// Rows 0, 1, 2 plus tx, ty, tz times row 3.
    void PostTranslate(double const& tx, double const& ty, double const& tz);
    /// Replaces the matrix by the rotation of a about x (y, z); a positive angle turns y to z.
    void RotateX(double const& a);
    void RotateY(double const& a);
    void RotateZ(double const& a);
    /// this = this × RotateX(a) (RotateY, RotateZ) through PostConcatMatrix.
    void PostRotateX(double const& a);
    void PostRotateY(double const& a);
    void PostRotateZ(double const& a);
    /// Without resetting: PostRotateX(ax), then PostRotateY(ay), then PostRotateZ(az).
    void RotationMatrix(double const& ax, double const& ay, double const& az);

    /// (p, 1)·M, divided by w unless w is exactly 1.0 or 0.0.
    SFVec3f TransformPoint(SFVec3f const& p) const;
    /// The same as TransformPoint, translation and division included (callers rely on it).
    SFVec3f TransformVector(SFVec3f const& v) const;
    /// (p, 1)·M divided by the plain sum of column 3, whatever the point's own w.
    SFVec3f operator*(SFVec3f const& p) const;
    /// p·M in full, no division; w exactly 1.0 adds row 3, w exactly 0.0 leaves it out.
    SFVec4f TransformPoint(SFVec4f const& p) const;
    /// dst[i] = TransformPoint(src[i]) for n points; src may be dst.
    void TransformPoints(SFVec3f const* const src, SFVec3f* const dst, unsigned long n) const;
    void TransformPoints(SFVec4f const* const src, SFVec4f* const dst, unsigned long n) const;
    /// (p, 1)·M⁻¹ by the pivoted inversion, no division; throws record 6 when M is singular.
    SFVec3f UntransformPoint(SFVec3f const& p) const;
    /// p·M⁻¹ in full; throws record 6 when M is singular.
    SFVec4f UntransformPoint(SFVec4f const& p) const;

    /// In-place Gauss-Jordan without pivoting: a zero pivot gives infinities and NaN silently.
    SFMatrix& Invert();
    /// The inverse, as Invert, not the adjoint its name suggests (callers rely on it).
    void MakeAdjoint();
    /// Does nothing; kept for callers.
    void Reorthogonalize();
    /// The determinant by scaled elimination, without row 3's scale multiplied back; 0.0 when a
    /// row scale or a pivot is below 1e-6.
    double GetDeterminant() const;
    SFMatrix& Transpose();
    /// Transposes the upper-left 3x3 block only.
    void TransposeRM();
    /// Divides elements 0..14 by m[3][3], which itself stays; throws record 6 when it is 0.0.
    void Normalize();
    /// The mean length of rows 0, 1, 2 (x, y, z only).
    double ComputeScale() const;
    /// The four row vectors, as the getters.
    void RecoverVectors(SFVec3f& left, SFVec3f& up, SFVec3f& view, SFVec3f& position) const;
    /// (ex, ey, ez) of the upper 3x3 block; undoes SetEulerAngles while cos ex > 0.
    SFVec3f GetEulerAngles() const;
    /// Writes the upper-left 3x3 block from the angles; the rest is not touched.
    void SetEulerAngles(SFVec3f const& e);

    /// m[2][2] = 0 and m[3][2] = -1/d: into the translation row, as callers expect.
    void Perspective1(double const& d);
    /// m[3][0] = -1/a, m[3][1] = -1/b.
    void Perspective2(double const& a, double const& b);
    /// m[3][0] = -1/a, m[3][1] = -1/b, m[3][2] = -1/c.
    void Perspective3(double const& a, double const& b, double const& c);
    /// Zeroes row 3; the argument is not read (callers rely on it).
    void PostPerspective(double const& d);
    /// Column 0 of rows 0..2 scaled by p.y + p.x + d: the sum, not a per-axis use, is kept.
    SFVec3f RayDirection(SFVec2f const& p, double const& d) const;

private:
    double m_element[16];
};

/// Builds an orthonormal viewing basis: n the unit view, v the unit part of up across n, u = n × v.
/// Writes *u, *v, *n and returns v. Zero or parallel inputs give zero vectors, without error.
ZQMATH_API SFVec3f* BuildUVN(SFVec3f const& view, SFVec3f const& up, SFVec3f* u, SFVec3f* v,
                             SFVec3f* n);

#endif
