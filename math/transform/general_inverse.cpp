// The pivoted 4x4 inversion behind SFMatrix::UntransformPoint.
#include "transform/general_inverse.h"

#include "frame/double_pair.h"

#include <cmath>
#include <utility>

namespace zq::detail {

namespace {

/// The transposed matrix being decomposed, its rows kept in pivot order: exchanging two rows
/// here is what exchanging two entries of a permutation vector does to the rows it names.
struct Work {
    double w[4][4];
    /// The reciprocal of each row's largest magnitude.
    double scale[4];
    /// The row of the transpose that each row started as.
    int origin[4];
};

/// Copies source transposed into work, with each row's scale; false when a row is all zeros.
bool LoadTransposed(const double* source, Work& work) {
    for (int i = 0; i < 4; ++i) {
        double largest = 0.0;
        for (int k = 0; k < 4; ++k) {
            work.w[i][k] = source[4 * k + i];
            if (std::fabs(work.w[i][k]) > largest) {
                largest = std::fabs(work.w[i][k]);
            }
        }
        if (largest == 0.0) {
            return false;
        }
        work.scale[i] = 1.0 / largest;
        work.origin[i] = i;
    }
    return true;
}

/// LU decomposition in place with scaled partial pivoting; false on an exactly zero best pivot
/// or last diagonal.
bool Decompose(Work& work) {
    double(&w)[4][4] = work.w;
    for (int k = 0; k < 3; ++k) {
        int best = k;
        double bestSize = std::fabs(w[k][k]) * work.scale[k];
        for (int r = k + 1; r < 4; ++r) {
            const double size = std::fabs(w[r][k]) * work.scale[r];
            if (size > bestSize) {
                best = r;
                bestSize = size;
            }
        }
        if (bestSize == 0.0) {
            return false;
        }
        if (best != k) {
            std::swap(w[best], w[k]);
            std::swap(work.scale[best], work.scale[k]);
            std::swap(work.origin[best], work.origin[k]);
        }
        for (int r = k + 1; r < 4; ++r) {
            w[r][k] /= w[k][k];
            if (w[r][k] != 0.0) {
                for (int c = k + 1; c < 4; ++c) {
                    w[r][c] -= w[r][k] * w[k][c];
                }
            }
        }
    }
    return w[3][3] != 0.0;
}

/// Solves LU·x = e_j for the four unit columns at once, two columns to a pair: x[k] holds
/// component k of the solutions for j = 0, 1 (index 0) and j = 2, 3 (index 1).
void SolveUnitColumns(const Work& work, Pair (&x)[4][2]) {
    const double(&w)[4][4] = work.w;
    for (int k = 0; k < 4; ++k) {
        double unit[4] = {0.0, 0.0, 0.0, 0.0};
        unit[work.origin[k]] = 1.0;
        for (int half = 0; half < 2; ++half) {
            Pair sum = Load(unit + 2 * half);
            for (int c = 0; c < k; ++c) {
                sum = sum - Splat(w[k][c]) * x[c][half];
            }
            x[k][half] = sum;
        }
    }
    for (int k = 3; k >= 0; --k) {
        for (int half = 0; half < 2; ++half) {
            Pair sum = x[k][half];
            for (int c = k + 1; c < 4; ++c) {
                sum = sum - Splat(w[k][c]) * x[c][half];
            }
            x[k][half] = sum / Splat(w[k][k]);
        }
    }
}

} // namespace

bool InvertGeneral(const double* source, double* destination) {
    Work work;
    if (!LoadTransposed(source, work) || !Decompose(work)) {
        return false;
    }
    Pair x[4][2];
    SolveUnitColumns(work, x);
    // The decomposition is of the transpose, so the solution for e_j is row j of the inverse.
    double solution[4][4];
    for (int k = 0; k < 4; ++k) {
        Store(&solution[k][0], x[k][0]);
        Store(&solution[k][2], x[k][1]);
    }
    for (int j = 0; j < 4; ++j) {
        for (int k = 0; k < 4; ++k) {
            destination[4 * j + k] = solution[k][j];
        }
    }
    return true;
}

} // namespace zq::detail
