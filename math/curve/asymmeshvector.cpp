// The asymmetric mesh vector: a profile that resamples itself evenly.
#include "meshvector.h"

#include "curve/meshlist.h"
#include "zqexception.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

/// A sample position converted to a list index; c or more (and NaN, which only n = 1 makes)
/// becomes the last index c - 1.
std::size_t ClampedIndex(double position, std::size_t c) {
    if (!(position < static_cast<double>(c))) {
        return c - 1;
    }
    return static_cast<std::size_t>(position);
}

} // namespace

CAsymMeshVector::CAsymMeshVector() = default;

CAsymMeshVector::CAsymMeshVector(long n)
    : m_points(zq::detail::NewPointList(static_cast<std::size_t>(zq::detail::Count32(n)))) {}

// The caller's list is used in place but never freed here: a handle does not own it.
CAsymMeshVector::CAsymMeshVector(std::vector<SFVec3f>* points)
    : m_points(points, [](std::vector<SFVec3f>*) {}) {}

void CAsymMeshVector::ReinterpolateOverY(long n) {
    const std::int32_t count = zq::detail::Count32(n);
    if (count < 1) {
        throw CZqMathException(7, nullptr);
    }
    // The n default points stay at the front and the samples are appended after them: callers
    // have always read the resampled profile from index n on.
    zq::detail::PointList result = zq::detail::NewPointList(static_cast<std::size_t>(count));
    static const std::vector<SFVec3f> kNoPoints;
    const std::vector<SFVec3f>& source = m_points != nullptr ? *m_points : kNoPoints;
    const SFVec3f first = source.at(0);
    const SFVec3f last = source.back();
    const std::size_t c = source.size();

    const double dx = (last.x - first.x) / (count - 1);
    const double dz = (last.z - first.z) / (count - 1);
    const double du = 1.0 / (count - 1);
    double x = first.x;
    double y = first.y;
    double z = first.z;
    double u = 0.0;
    // The sample counter is 16 bits wide: no more than 65535 points are resampled, where a
    // wrapping counter would never reach a larger n.
    const std::int32_t samples = std::min<std::int32_t>(count, UINT16_MAX);
    for (std::int32_t k = 0; k < samples; ++k) {
        result->push_back(SFVec3f(x, y, z));
        x += dx;
        z += dz;
        u += du;
        // Scaled over c rather than c - 1: the last source y is reached before the last sample
        // and then held, as callers' profiles have always had it.
        const double position = static_cast<double>(c) * u;
        const std::size_t lo = ClampedIndex(std::floor(position), c);
        const std::size_t hi = ClampedIndex(std::ceil(position), c);
        if (lo == hi) {
            y = source[lo].y;
        } else {
            y = source[lo].y + (position - std::floor(position)) * (source[hi].y - source[lo].y);
        }
    }
    // The old list is let go: it is freed unless another handle still shares it, or it is a
    // caller's.
    m_points = result;
}

std::vector<SFVec3f>* CAsymMeshVector::GetPoints() const {
    return m_points.get();
}
