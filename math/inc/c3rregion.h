// c3rregion.h: the axis-aligned box.
#ifndef ZQMATH_C3RREGION_H
#define ZQMATH_C3RREGION_H

#include "sfvec3f.h"
#include "zqexport.h"

class C3Matrix;
class SFMatrix;

/// An axis-aligned box of two corner points in double precision. Only the two-point
/// constructor and OrderPoints keep minimum <= maximum; every other operation stores what it
/// computes. All comparisons are exact.
class ZQMATH_API C3RRegion {
public:
    /// A face of the box; kNoFace is the value ExitFace gives.
    enum ESpatialFace : int {
        kNoFace = 0,
        kMinXFace = 1,
        kMaxXFace = 2,
        kMinYFace = 3,
        kMaxYFace = 4,
        kMinZFace = 5,
        kMaxZFace = 6
    };

    /// Minimum (1, 1, 1), maximum (0, 0, 0): an inverted unit box, empty by IsEmpty.
    C3RRegion();
    /// The box spanned by a and b, ordered per axis.
    C3RRegion(const SFVec3f& a, const SFVec3f& b);
    C3RRegion(const C3RRegion& r) = default;
    C3RRegion& operator=(const C3RRegion& r) = default;

    SFVec3f GetMinPoint() const;
    SFVec3f GetMaxPoint() const;
    /// Stores the point as given: no ordering.
    void SetMinPoint(const SFVec3f& p);
    void SetMaxPoint(const SFVec3f& p);
    /// Maximum minus minimum.
    SFVec3f GetSize() const;
    /// Resizes about the centre.
    void SetSize(const SFVec3f& s);
    SFVec3f GetCenter() const;
    /// Moves the box, keeping its size.
    void SetCenter(const SFVec3f& c);
    /// Clears the minimum only, as callers have always had it; the maximum stays.
    void SetEmpty();
    /// True for an inverted box or a single point; a box flat in one or two axes is not empty.
    bool IsEmpty() const;

    /// Exchanges minimum and maximum on every axis where the minimum is strictly greater.
    void OrderPoints();
    /// Moves each face outward to p where p lies strictly beyond it (a NaN never enters; of -0
    /// and +0 the face keeps the one it has).
    ZQMATH_INLINE_EXPORT void ExtendTo(const SFVec3f& p);
    /// Moves each face outward to r's; r is not tested for emptiness (contrast operator+=).
    ZQMATH_INLINE_EXPORT void ExtendTo(const C3RRegion& r);
    /// The union, where a box equal to kEmptyBox (the zero box) is the identity. A default box
    /// is not: it takes part and pulls the result towards (1, 1, 1)-(0, 0, 0).
    C3RRegion& operator+=(const C3RRegion& r);
    /// Does nothing: the box is left unchanged, as callers have always had it.
    void IntersectWith(const C3RRegion& r) const;
    /// Clamps p into the box, the maximum second (on an inverted axis the maximum wins).
    void Pin(SFVec3f& p) const;
    /// Moves both corners by d.
    void Offset(const SFVec3f& d);
    /// Minimum plus d, maximum minus d: a positive d shrinks the box on every side.
    void Inset(const SFVec3f& d);
    /// Moves each face out by f times the full extent (the extent becomes 1 + 2f times).
    void GrowByFactor(double f);
    /// p in the box's unit coordinates (0 at the minimum face, 1 at the maximum); a zero
    /// extent gives IEEE infinities or NaN.
    SFVec3f RescaleInto(const SFVec3f& p) const;
    /// Each corner (minimum first) through m's affine part, divided by the plain sum of m's
    /// last column (not weighted by the point); the corners are not reordered.
    void Transform(const SFMatrix& m);
    /// Each corner multiplied by m; the corners are not reordered.
    void Transform(const C3Matrix& m);

    /// The length of the diagonal.
    double Diameter() const;
    /// Half the diagonal.
    double Radius() const;
    /// True when p lies in the box, faces included.
    bool Contains(const SFVec3f& p) const;
    /// True when r lies in the box, shared faces included.
    bool Contains(const C3RRegion& r) const;
    /// True when the three extents are exactly equal.
    bool EqualSize(const C3RRegion& r) const;
    bool operator==(const C3RRegion& r) const;
    bool operator!=(const C3RRegion& r) const;
    /// Corners 0-3 are the bottom face counter-clockwise from the minimum seen from +z, 4-7 the
    /// top face in the same order; 8 and up repeat 4-7. A negative index whose remainder by 4 is
    /// not 0 gives the x and y of the minimum.
    SFVec3f Corner(int i) const;

    /// Always false: the face walk is not part of this library.
    bool NextFace(C3RRegion::ESpatialFace& face) const;
    /// Always kNoFace, computing nothing.
    C3RRegion::ESpatialFace ExitFace(const SFVec3f& origin, const SFVec3f& direction) const;

    /// The zero box, against which operator+= tests: deliberately not an inverted box.
    static const C3RRegion& kEmptyBox;
    /// A second, distinct box, also all zero.
    static const C3RRegion& kZeroBox;

private:
    /// Moves each face outward to low (high) where that lies strictly beyond it; inline, as it
    /// runs once per point of a cloud, and writes a face only when it moves.
    // No arithmetic: nothing here for a caller's compiler to fuse or reorder.
    void ExtendFaces(const SFVec3f& low, const SFVec3f& high) {
        if (low.x < m_min.x) {
            m_min.x = low.x;
        }
        if (high.x > m_max.x) {
            m_max.x = high.x;
        }
        if (low.y < m_min.y) {
            m_min.y = low.y;
        }
        if (high.y > m_max.y) {
            m_max.y = high.y;
        }
        if (low.z < m_min.z) {
            m_min.z = low.z;
        }
        if (high.z > m_max.z) {
            m_max.z = high.z;
        }
    }

    SFVec3f m_min;
    SFVec3f m_max;
};

#if ZQMATH_INLINE_EXPORTED
// Inline, so that a cloud's points cost no call each.
inline void C3RRegion::ExtendTo(const SFVec3f& p) {
    ExtendFaces(p, p);
}

inline void C3RRegion::ExtendTo(const C3RRegion& r) {
    ExtendFaces(r.m_min, r.m_max);
}
#endif

#endif
