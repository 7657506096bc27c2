// SFVec3f: the product with a 3x3 matrix.
#include "sfvec3f.h"

#include "c3matrix.h"

SFVec3f SFVec3f::MulPointByMatrix(C3Matrix const* m) const {
    // The matrix times the column vector, the convention of C3Matrix's rotation builders.
    const C3Matrix& e = *m;
    return SFVec3f(e[0] * x + e[1] * y + e[2] * z, e[3] * x + e[4] * y + e[5] * z,
                   e[6] * x + e[7] * y + e[8] * z);
}
