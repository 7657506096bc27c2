// c3curve.h: the curve through a caller's array of 3D control points.
#ifndef ZQMATH_C3CURVE_H
#define ZQMATH_C3CURVE_H

#include "sfvec3f.h"
#include "zqexport.h"

#include <memory>
#include <vector>

/// A view over a caller's control points (read and written in place, never copied or freed)
/// that interpolates segment i from point i (t = 0) to point i + 1 (t = 1), tabulates sampled
/// arc length and finds the point at a travelled distance. Indices are not checked against the
/// count. Copies share the points and the arc-length table.
class ZQMATH_API C3Curve {
public:
    /// How a segment is interpolated; kind 1 is reserved and throws.
    enum ECurveInterpolator : int {
        kLinearInterpolator = 0,
        kReservedInterpolator = 1,
        kSegmentSplineInterpolator = 2,
        kNeighbourSplineInterpolator = 3,
        kBlendedSplineInterpolator = 4
    };

    /// Stores the four values; allocates nothing (there is no arc-length table yet).
    C3Curve(SFVec3f* points, int count, C3Curve::ECurveInterpolator kind, int steps);
    C3Curve(const C3Curve& other) = default;
    /// Copies every field: the point array and the arc-length table are shared.
    C3Curve& operator=(const C3Curve& other) = default;

    /// 1 when count, kind, steps and every control point are equal (exact comparison as for
    /// SFVec3f); else 0. The arc-length table is not compared.
    int operator==(const C3Curve& other) const;
    /// The number of control points, not a geometric length.
    int Length() const;
    /// Control point i in the caller's array.
    SFVec3f& GetControlPoint(int i) const;
    /// Overwrites control point i in the caller's array; the arc-length table is not refreshed.
    void ControlPoint(int i, const SFVec3f& p);
    /// Entry i of the arc-length table: the sampled length up to the end of segment i. NaN when
    /// there is no such entry (no table yet, or i outside it).
    double GetIntegration(int i) const;
    /// Builds a new arc-length table with the curve's own steps; copies keep the table they had.
    /// The last point starts a segment too, whose reads past the array are held at that point.
    void ComputeIntegratePoints();
    /// The sampled length of one segment over steps chords; the point at t = 1 is never
    /// sampled, so the last chord is left out (every length and distance depends on it).
    double SegmentLength(int segment, int steps) const;
    /// The point at travelled distance d, searching from segment start; from and to receive
    /// points i - 1 and i of the segment i found, one before the segment that is interpolated.
    /// The result may be a shared vector that the next interpolation overwrites: copy it.
    SFVec3f& PointAtDistance(double distance, int start, SFVec3f& from, SFVec3f& to) const;

private:
    /// The point at t on a segment, in one shared vector per kind family that the next call of
    /// that family overwrites. Kind 1 throws "Not yet implemented", other kinds record 5.
    SFVec3f& Interpolate(int segment, double t) const;
    /// Control point k, with k held inside the array: only reads past either end are moved.
    /// NaN when there are no points.
    const SFVec3f& Point(long long k) const;

    C3Curve::ECurveInterpolator m_kind;
    int m_count;
    SFVec3f* m_points;
    std::shared_ptr<std::vector<double>> m_integration;
    int m_steps;
};

#endif
