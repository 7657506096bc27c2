// SFVec2f: the projection of a point by a 3x3 matrix.
#include "sfvec2f.h"

#include "c3matrix.h"

SFVec2f SFVec2f::MulPointByProjMatrix(C3Matrix* m) const {
    // The point is (x, y, 1) and each row of the matrix gives one coordinate.
    const C3Matrix& e = *m;
    const double u = e[0] * x + e[1] * y + e[2];
    const double v = e[3] * x + e[4] * y + e[5];
    const double w = e[6] * x + e[7] * y + e[8];
    if (w != 0.0) {
        return SFVec2f(u / w, v / w);
    }
    return SFVec2f(u, v);
}
