// meshvector.h: handles on the point list of one mesh row or profile.
#ifndef ZQMATH_MESHVECTOR_H
#define ZQMATH_MESHVECTOR_H

#include "sfvec3f.h"
#include "zqexport.h"

#include <memory>
#include <vector>

/// A handle on a profile's point list that can resample it evenly. Copies share the list and
/// see each other's writes; a list made here is freed when its last handle lets go, a list
/// handed in by pointer stays the caller's.
class ZQMATH_API CAsymMeshVector {
public:
    /// No list.
    CAsymMeshVector();
    /// A new list of n points, all (0, 0, 0); n is a 32-bit count, a negative one is rejected
    /// by the list (std::length_error).
    CAsymMeshVector(long n);
    /// Uses the caller's list in place (no copy); the caller keeps ownership of it.
    CAsymMeshVector(std::vector<SFVec3f>* points);

    /// Replaces the list by a new one of 2n points: n default points first, then n points with
    /// x and z spaced evenly from the first point to the last and y following the old y values
    /// scaled over the old count c (not c - 1), so the last y is reached early and then held.
    /// At most 65535 points are resampled (a 16-bit counter). n < 1 throws record 7 and an
    /// empty list std::out_of_range, both leaving the list unchanged.
    void ReinterpolateOverY(long n);
    /// The list, or null.
    std::vector<SFVec3f>* GetPoints() const;

private:
    std::shared_ptr<std::vector<SFVec3f>> m_points;
};

/// A handle on a symmetric profile's point list, made by copying an asymmetric one. Copies
/// share the list and see each other's writes; the last handle on it frees it.
class ZQMATH_API CSymMeshVector {
public:
    /// A new list of n points, all (0, 0, 0).
    CSymMeshVector(unsigned int n);
    /// A new list holding copies of the source's points in order (empty for a source without
    /// a list).
    CSymMeshVector(const CAsymMeshVector& source);
    CSymMeshVector(const CSymMeshVector& other) = default;
    /// Shares the other's list.
    CSymMeshVector& operator=(const CSymMeshVector& other) = default;

    /// 1 only when both are the same object: identity, not contents, as callers expect.
    int operator==(const CSymMeshVector& other) const;
    /// The list.
    std::vector<SFVec3f>* GetPoints() const;

private:
    std::shared_ptr<std::vector<SFVec3f>> m_points;
};

#endif
