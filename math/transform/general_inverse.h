// general_inverse.h: the pivoted 4x4 inversion behind SFMatrix::UntransformPoint.
#ifndef ZQMATH_GENERAL_INVERSE_H
#define ZQMATH_GENERAL_INVERSE_H

namespace zq::detail {

/// Writes the inverse of the 4x4 row-major matrix source into destination (which may be
/// source) by LU decomposition with scaled partial pivoting. Returns false, leaving destination
/// unchanged, when a row is all zeros, a best pivot or the last diagonal is exactly 0.0.
bool InvertGeneral(const double* source, double* destination);

} // namespace zq::detail

#endif
