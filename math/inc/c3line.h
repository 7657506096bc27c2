// c3line.h: the directed 3D line segment.
#ifndef ZQMATH_C3LINE_H
#define ZQMATH_C3LINE_H

#include "sfvec3f.h"
#include "zqexport.h"

/// A directed segment from start to finish in double precision, with a unit direction cached
/// when it is built from two points and never refreshed afterwards.
class ZQMATH_API C3Line {
public:
    /// Start, finish and direction all zero.
    C3Line();
    /// Start a, finish b, direction (b - a).Normalize(): a zero or exactly unit length is kept.
    C3Line(const SFVec3f& a, const SFVec3f& b);
    C3Line(const C3Line& other) = default;
    C3Line& operator=(const C3Line& other) = default;

    const SFVec3f& Start() const;
    const SFVec3f& Finish() const;
    /// The direction cached by the constructor, stale once the end points have moved.
    const SFVec3f& GetDirection() const;
    /// Copies start into s and finish into f.
    void GetPoints(SFVec3f& s, SFVec3f& f) const;
    /// finish - start, not normalised.
    SFVec3f DisplacementVector() const;
    /// finish - start normalised afresh; the cached direction is not read.
    SFVec3f DirectionVector() const;
    /// start - finish normalised.
    SFVec3f ReverseDirectionVector() const;
    /// The end point nearer to p by squared distance; a tie gives the finish.
    SFVec3f ClosestEndPoint(const SFVec3f& p) const;
    /// Exact equality of start and finish (a NaN component counts as equal, as for SFVec3f);
    /// the direction is not compared.
    bool operator==(const C3Line& other) const;

    /// The distance from p to the segment from finish to finish + start: the start point is
    /// used as a displacement, not as an end point. Callers depend on this asymmetry.
    double Distance(const SFVec3f& p) const;
    /// The squared distance from p to the infinite line through both end points (no clamping,
    /// no square root); closest is never written.
    double Distance(const SFVec3f& p, SFVec3f& closest) const;
    /// The cosine of the angle between the two lines' normalised displacements (no arc cosine:
    /// callers compare cosines).
    double VertexAngle(const C3Line& other) const;
    /// (d1 x d2) . d0 of the displacements of l1, l2 and this line: zero when coplanar, its
    /// sign the side of the plane of d1 and d2 this line points to.
    double PlaneAngle(const C3Line& l1, const C3Line& l2) const;
    /// The angle in radians, in [0, pi], at the start point between the direction to the finish
    /// and the direction to p, as atan2(|a x b|, a . b); 0 when either direction is zero.
    double PointAngle(const SFVec3f& p) const;
    /// Clips the segment in place against the perspective view volume |x| <= z, |y| <= z,
    /// z >= zmin; the second argument is not read. Both parameters start at 0.0 (not tL = 1.0),
    /// so an accepted segment collapses to its start and always reports its finish clipped.
    /// A rejected segment is left unchanged with both flags false. The direction is not updated.
    bool ClipToViewVolume(const double& zmin, const double&, bool& finishClipped,
                          bool& startClipped);

private:
    /// One Liang-Barsky boundary test: narrows [tE, tL] or returns false when the segment lies
    /// outside; denom 0 (or NaN) accepts exactly when num <= 0.
    bool Clipt(const double& denom, const double& num, double& tE, double& tL) const;

    SFVec3f m_start;
    SFVec3f m_finish;
    SFVec3f m_direction;
};

#endif
