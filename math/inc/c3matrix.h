// c3matrix.h: the 3x3 rotation and orientation matrix.
#ifndef ZQMATH_C3MATRIX_H
#define ZQMATH_C3MATRIX_H

#include "sfvec3f.h"
#include "zqexport.h"
#include "zqplatform.h"

class CQuat;
class SFMatrix;

/// A 3x3 matrix of nine doubles e[r][c] stored row by row (index 3r + c). Unlike SFMatrix its
/// vector and nine-number constructors fill columns, and its rotation builders use the
/// column-vector textbook forms. Angles are radians.
class ZQMATH_API C3Matrix {
public:
    /// The code of Rotate: which axis it turns about.
    enum EAxis : int {
        kYAxis = 0, ///< about y
        kXAxis = 1, ///< about x, in the opposite sense to PostRotateX
        kZAxis = 2  ///< about z
    };

    /// Nine zeros.
    C3Matrix();
    C3Matrix(C3Matrix const& m);
    /// The arguments fill columns: the first three are column 0.
    C3Matrix(double c00, double c10, double c20, double c01, double c11, double c21, double c02,
             double c12, double c22);
    /// a, b, c are columns 0, 1, 2.
    C3Matrix(SFVec3f const& a, SFVec3f const& b, SFVec3f const& c);
    /// The upper-left 3x3 block of m.
    C3Matrix(SFMatrix* m);
    /// The rotation of q as SFMatrix(CQuat*) builds it; a zero q is not guarded.
    C3Matrix(CQuat* q);
    /// The textbook rotation about axis as given (not normalised) by a.
    C3Matrix(SFVec3f const& axis, double a);
    C3Matrix& operator=(C3Matrix const& m);

    /// Columns 0, 1 and 2.
    void ExtractBasisVectors(SFVec3f& a, SFVec3f& b, SFVec3f& c) const;
    void Zero();
    void Identity();
    /// Element i, row by row; no range check.
    double& operator[](long i);
    double operator[](long i) const;
    /// Copies the nine elements row by row to out; returns out.
    double* GetMatrix(double* const out) const;
    /// A new matrix holding B × this, which the caller deletes.
    C3Matrix* MatMul(C3Matrix const& B) const;
    /// B × this.
    C3Matrix operator*(C3Matrix const& B) const;
    /// This matrix times v as a column vector (SFVec3f::MulPointByMatrix).
    SFVec3f operator*(SFVec3f const& v) const;
    /// this = B × this through a temporary.
    void MultiplyIn(C3Matrix* B);
    /// Writes the transpose into out (which may be this), or into a new matrix the caller
    /// deletes when out is null; returns the matrix written.
    C3Matrix* Transpose(C3Matrix* out) const;
    /// Replaces the matrix by Rz(a)·Ry(b)·Rx(c).
    void RotationMatrix(double a, double b, double c);
    /// this = R × this with the textbook rotation R about x (y, z).
    void PostRotateX(double a);
    void PostRotateY(double a);
    void PostRotateZ(double a);
    /// this = R × this with R about the axis of the code; an unknown code zeroes the matrix.
    void Rotate(double a, EAxis axis);
    /// Placeholders: always (0, 0, 0).
    SFVec3f RecoverHeading() const;
    SFVec3f RecoverAttitude() const;

private:
    DWORD m_word; // copied along, never interpreted
    double m_element[9];
};

#endif
