// The pivoted N×N inversion behind SFMatrix::UntransformPoint.
#include "transform/general_inverse.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace zq::detail {

namespace {

/// Work storage of one inversion: up to 4×4 on the stack, larger sizes on the heap. Both are
/// released when the object goes out of scope, on success and on every failure path.
class Workspace {
public:
    explicit Workspace(int n) : m_n(static_cast<std::size_t>(n)) {
        const std::size_t doubles = m_n * m_n + 2 * m_n;
        if (doubles > kLocalDoubles || m_n > kLocalIndices) {
            m_heapDoubles.resize(doubles);
            m_heapIndices.resize(m_n);
            m_doubles = m_heapDoubles.data();
            m_indices = m_heapIndices.data();
        }
    }
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// The work matrix, row by row.
    double* Matrix() { return m_doubles; }
    /// The reciprocal of each row's largest magnitude.
    double* Scales() { return m_doubles + m_n * m_n; }
    /// The solution vector of one column.
    double* Solution() { return m_doubles + m_n * m_n + m_n; }
    /// The row permutation.
    int* Permutation() { return m_indices; }

private:
    static constexpr std::size_t kLocalIndices = 4;
    static constexpr std::size_t kLocalDoubles = 4 * 4 + 2 * 4;

    std::size_t m_n;
    double m_localDoubles[kLocalDoubles];
    int m_localIndices[kLocalIndices];
    std::vector<double> m_heapDoubles;
    std::vector<int> m_heapIndices;
    double* m_doubles = m_localDoubles;
    int* m_indices = m_localIndices;
};

/// Copies source transposed into w, records each row's scale and the identity permutation;
/// false when a row of w is all zeros.
bool LoadTransposed(const double* source, int n, double* w, double* scale, int* perm) {
    for (int i = 0; i < n; ++i) {
        double largest = 0.0;
        for (int k = 0; k < n; ++k) {
            w[i * n + k] = source[k * n + i];
            if (std::fabs(w[i * n + k]) > largest) {
                largest = std::fabs(w[i * n + k]);
            }
        }
        if (largest == 0.0) {
            return false;
        }
        scale[i] = 1.0 / largest;
        perm[i] = i;
    }
    return true;
}

/// LU decomposition of w in place with scaled partial pivoting; false on an exactly zero best
/// pivot or last diagonal.
bool Decompose(double* w, int n, const double* scale, int* perm) {
    for (int k = 0; k + 1 < n; ++k) {
        int best = k;
        double bestSize = std::fabs(w[perm[k] * n + k]) * scale[perm[k]];
        for (int r = k + 1; r < n; ++r) {
            const double size = std::fabs(w[perm[r] * n + k]) * scale[perm[r]];
            if (size > bestSize) {
                best = r;
                bestSize = size;
            }
        }
        if (bestSize == 0.0) {
            return false;
        }
        const int pivotRow = perm[best];
        perm[best] = perm[k];
        perm[k] = pivotRow;
        for (int r = k + 1; r < n; ++r) {
            double* row = w + perm[r] * n;
            const double* pivot = w + pivotRow * n;
            row[k] /= pivot[k];
            if (row[k] != 0.0) {
                for (int c = k + 1; c < n; ++c) {
                    row[c] -= row[k] * pivot[c];
                }
            }
        }
    }
    return w[perm[n - 1] * n + n - 1] != 0.0;
}

/// Solves LU·x = e_j in permuted order into x.
void SolveUnitColumn(const double* w, int n, const int* perm, int j, double* x) {
    for (int k = 0; k < n; ++k) {
        double sum = perm[k] == j ? 1.0 : 0.0;
        for (int c = 0; c < k; ++c) {
            sum -= w[perm[k] * n + c] * x[c];
        }
        x[k] = sum;
    }
    for (int k = n - 1; k >= 0; --k) {
        double sum = x[k];
        for (int c = k + 1; c < n; ++c) {
            sum -= w[perm[k] * n + c] * x[c];
        }
        x[k] = sum / w[perm[k] * n + k];
    }
}

} // namespace

bool InvertGeneral(const double* source, double* destination, int n) {
    if (n <= 0) {
        return false;
    }
    Workspace work(n);
    double* w = work.Matrix();
    double* scale = work.Scales();
    int* perm = work.Permutation();
    if (!LoadTransposed(source, n, w, scale, perm) || !Decompose(w, n, scale, perm)) {
        return false;
    }
    // w holds the transpose, so its solution for e_j is row j of the inverse.
    double* x = work.Solution();
    for (int j = 0; j < n; ++j) {
        SolveUnitColumn(w, n, perm, j, x);
        for (int k = 0; k < n; ++k) {
            destination[j * n + k] = x[k];
        }
    }
    return true;
}

} // namespace zq::detail
