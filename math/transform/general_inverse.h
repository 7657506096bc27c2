// general_inverse.h: the pivoted N×N inversion behind SFMatrix::UntransformPoint.
#ifndef ZQMATH_GENERAL_INVERSE_H
#define ZQMATH_GENERAL_INVERSE_H

namespace zq::detail {

/// Writes the inverse of the n×n row-major matrix source into destination (which may be
/// source) by LU decomposition with scaled partial pivoting. Returns false, leaving destination
/// unchanged, when a row is all zeros, a best pivot or the last diagonal is exactly 0.0, or
/// when n is not positive.
bool InvertGeneral(const double* source, double* destination, int n);

} // namespace zq::detail

#endif
