// SFVec4f: Euler angles of the 24 axis orders, to and from matrices and quaternions.
#include "sfvec4f.h"

#include "cquat.h"
#include "sfmatrix.h"
#include "transform/rotation_detail.h"
#include "vector/vector_detail.h"

#include <cfloat>
#include <cmath>
#include <utility>

namespace {

/// The fields of an order code and the axes they select.
struct EulerOrder {
    explicit EulerOrder(unsigned code)
        : rotating((code & 1u) != 0), repeated((code & 2u) != 0), odd((code & 4u) != 0),
          i(kSafe[(code >> 3) & 3u]), j(kNext[i + (odd ? 1 : 0)]), k(kNext[i + (odd ? 0 : 1)]) {}

    static constexpr int kNext[4] = {1, 2, 0, 1};
    static constexpr int kSafe[4] = {0, 1, 2, 0};

    bool rotating;
    bool repeated;
    bool odd;
    int i;
    int j;
    int k;
};

/// The order code in w, truncated toward zero; only its low bits are used.
unsigned OrderOf(const SFVec4f& ea) {
    return zq::detail::TruncatedLow32(ea.w);
}

/// 16 times the double epsilon, where the published scheme has the single-precision one: kept.
constexpr double kDegenerate = 16.0 * DBL_EPSILON;

} // namespace

void SFVec4f::Eul_ToSFMatrix(SFVec4f ea, SFMatrix& M) const {
    const EulerOrder o(OrderOf(ea));
    if (o.rotating) {
        std::swap(ea.x, ea.z);
    }
    if (o.odd) {
        ea = SFVec4f(-ea.x, -ea.y, -ea.z, ea.w);
    }
    const double ci = std::cos(ea.x);
    const double cj = std::cos(ea.y);
    const double ch = std::cos(ea.z);
    const double si = std::sin(ea.x);
    const double sj = std::sin(ea.y);
    const double sh = std::sin(ea.z);
    const double cc = ci * ch;
    const double cs = ci * sh;
    const double sc = si * ch;
    const double ss = si * sh;
    M.Identity();
    // Through one pointer: the exported operator[] would be a call per element.
    double* const m = &M[0];
    const auto e = [m](int r, int c) -> double& { return m[4 * r + c]; };
    const int i = o.i;
    const int j = o.j;
    const int k = o.k;
    if (o.repeated) {
        e(i, i) = cj;
        e(i, j) = sj * si;
        e(i, k) = sj * ci;
        e(j, i) = sj * sh;
        e(j, j) = -cj * ss + cc;
        e(j, k) = -cj * cs - sc;
        e(k, i) = -sj * ch;
        e(k, j) = cj * sc + cs;
        e(k, k) = cj * cc - ss;
    } else {
        e(i, i) = cj * ch;
        e(i, j) = sj * sc - cs;
        e(i, k) = sj * cc + ss;
        e(j, i) = cj * sh;
        e(j, j) = sj * ss + cc;
        e(j, k) = sj * cs - sc;
        e(k, i) = -sj;
        e(k, j) = cj * si;
        e(k, k) = cj * ci;
    }
}

SFVec4f SFVec4f::Eul_FromSFMatrix(SFMatrix M, int order) const {
    const EulerOrder o(static_cast<unsigned>(order));
    const double* const m = &M[0];
    const auto e = [m](int r, int c) { return m[4 * r + c]; };
    const int i = o.i;
    const int j = o.j;
    const int k = o.k;
    double x;
    double y;
    double z = 0.0;
    if (o.repeated) {
        const double sy = std::sqrt(e(i, j) * e(i, j) + e(i, k) * e(i, k));
        y = std::atan2(sy, e(i, i));
        if (sy > kDegenerate) {
            x = std::atan2(e(i, j), e(i, k));
            z = std::atan2(e(j, i), -e(k, i));
        } else {
            x = std::atan2(-e(j, k), e(j, j));
        }
    } else {
        const double cy = std::sqrt(e(i, i) * e(i, i) + e(j, i) * e(j, i));
        y = std::atan2(-e(k, i), cy);
        if (cy > kDegenerate) {
            x = std::atan2(e(k, j), e(k, k));
            z = std::atan2(e(j, i), e(i, i));
        } else {
            x = std::atan2(-e(j, k), e(j, j));
        }
    }
    if (o.odd) {
        x = -x;
        y = -y;
        z = -z;
    }
    if (o.rotating) {
        std::swap(x, z);
    }
    return SFVec4f(x, y, z, static_cast<double>(order));
}

SFVec4f SFVec4f::Eul_FromQuat(CQuat q, int order) const {
    const double n = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
    double e[9];
    zq::detail::QuaternionRotation(q, n > 0.0 ? 2.0 / n : 0.0, e);
    const SFMatrix m(e[0], e[1], e[2], 0.0, e[3], e[4], e[5], 0.0, e[6], e[7], e[8], 0.0, 0.0, 0.0,
                     0.0, 1.0);
    return Eul_FromSFMatrix(m, order);
}

CQuat SFVec4f::Eul_ToQuat(SFVec4f ea) const {
    // The order in w is not read: every order gives the yaw-pitch-roll quaternion, on purpose.
    return CQuat(ea.Chop());
}
