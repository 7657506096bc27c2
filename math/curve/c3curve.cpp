// The curve through a caller's array of control points.
#include "c3curve.h"

#include "zqexception.h"

#include <algorithm>
#include <cstddef>
#include <limits>

C3Curve::C3Curve(SFVec3f* points, int count, C3Curve::ECurveInterpolator kind, int steps)
    : m_kind(kind), m_count(count), m_points(points), m_steps(steps) {}

int C3Curve::operator==(const C3Curve& other) const {
    if (m_count != other.m_count || m_kind != other.m_kind || m_steps != other.m_steps) {
        return 0;
    }
    for (int i = 0; i < m_count; ++i) {
        if (!(m_points[i] == other.m_points[i])) {
            return 0;
        }
    }
    return 1;
}

int C3Curve::Length() const {
    return m_count;
}

SFVec3f& C3Curve::GetControlPoint(int i) const {
    return m_points[i];
}

void C3Curve::ControlPoint(int i, const SFVec3f& p) {
    m_points[i] = p;
}

double C3Curve::GetIntegration(int i) const {
    if (m_integration == nullptr || i < 0 || static_cast<std::size_t>(i) >= m_integration->size()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return (*m_integration)[static_cast<std::size_t>(i)];
}

void C3Curve::ComputeIntegratePoints() {
    // A new table each time: copies that shared the earlier one keep it.
    m_integration = std::make_shared<std::vector<double>>(std::max(m_count, 0));
    double total = 0.0;
    for (int i = 0; i < m_count; ++i) {
        total += SegmentLength(i, m_steps);
        (*m_integration)[static_cast<std::size_t>(i)] = total;
    }
}

double C3Curve::SegmentLength(int segment, int steps) const {
    const double dt = 1.0 / steps;
    double length = 0.0;
    SFVec3f previous(0.0, 0.0, 0.0);
    double t = 0.0;
    // t is accumulated and the loop stops once it reaches 1.0, so the point at t = 1 is never
    // sampled and the last chord is left out; with steps = 10 the sum falls just short of 1.0
    // and an eleventh sample is taken. Every stored length depends on exactly this. A negative
    // step count would walk away from 1.0 forever: it ends after one sample, as 0 does.
    do {
        const SFVec3f p = Interpolate(segment, t);
        if (t > 0.0) {
            length += (p - previous).Length();
        }
        previous = p;
        t = t + dt;
    } while (t < 1.0 && dt > 0.0);
    return length;
}

SFVec3f& C3Curve::PointAtDistance(double distance, int start, SFVec3f& from, SFVec3f& to) const {
    int i = start;
    while (i < m_count && distance > GetIntegration(i)) {
        ++i;
    }
    if (i >= m_count) {
        // max: with no points at all, segment 0 stands in (its every read is NaN).
        i = std::max(m_count, 1) - 1;
    }
    // The points one before the segment that is interpolated, as callers have always had them.
    from = Point(i - 1LL);
    to = Point(i);
    const double before = i == 0 ? 0.0 : GetIntegration(i - 1);
    const double seg = GetIntegration(i) - before;
    const double t = seg == 0.0 ? 0.0 : (distance - before) / seg;
    return Interpolate(i, t);
}

SFVec3f& C3Curve::Interpolate(int segment, double t) const {
    // One result per kind family, overwritten by the next call of that family: callers copy it.
    static SFVec3f linear(0.0, 0.0, 0.0);
    static SFVec3f spline(0.0, 0.0, 0.0);
    const long long i = segment;
    const SFVec3f& p1 = Point(i);
    const SFVec3f& p2 = Point(i + 1);
    const SFVec3f& prev = i == 0 ? p1 : Point(i - 1);
    const SFVec3f& next = i + 2 < m_count ? Point(i + 2) : p2;
    switch (m_kind) {
    case kLinearInterpolator:
        return linear = p1 + (p2 - p1) * t;
    case kReservedInterpolator:
        throw CZqException("Not yet implemented", CZqException::kInternalError,
                           CZqException::kFatal);
    case kSegmentSplineInterpolator:
        return spline.Spline(t, p1, p1, p2, p2);
    case kNeighbourSplineInterpolator:
        return spline.Spline(t, prev, p1, p2, next);
    case kBlendedSplineInterpolator: {
        // The outer points slide from the neighbours towards the segment ends, the near one by
        // t and the far one by 1 - t; this pairing is the curve's shape, keep it.
        const SFVec3f b = prev + (p1 - prev) * t;
        const SFVec3f c = p2 + (next - p2) * (1.0 - t);
        return spline.Spline(t, b, p1, p2, c);
    }
    }
    throw CZqMathException(5, nullptr);
}

const SFVec3f& C3Curve::Point(long long k) const {
    static const SFVec3f kNoPoint(std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::quiet_NaN());
    if (m_count < 1) {
        return kNoPoint;
    }
    return m_points[std::clamp(k, 0LL, m_count - 1LL)];
}
