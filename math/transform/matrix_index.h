// matrix_index.h: where element m[r][c] of a 4x4 matrix sits. Not installed.
#ifndef ZQMATH_MATRIX_INDEX_H
#define ZQMATH_MATRIX_INDEX_H

namespace zq::detail {

/// The linear index of m[r][c] in a 4x4 matrix stored row by row.
constexpr int Index4(int r, int c) {
    return 4 * r + c;
}

} // namespace zq::detail

#endif
