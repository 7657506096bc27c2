// c2triangulation.h: the Delaunay triangulation of height samples as flat index arrays.
#ifndef ZQMATH_C2TRIANGULATION_H
#define ZQMATH_C2TRIANGULATION_H

#include "sfvec2f.h"
#include "sfvec3f.h"
#include "zqexport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zq::detail {
class FlatTriangulation;
} // namespace zq::detail

/// How a triangulation is built (C2Triangulation, and C2Subdivision::Build).
struct C2TriangulationOptions {
    /// The enclosing triangle a, b, c, coordinates in the usable range (given clockwise in x-z,
    /// b and c are exchanged); when absent, a triangle at height 0 reaching 10^12 times the
    /// bounding box's larger side from its centre (less where the usable range ends).
    std::optional<std::array<SFVec3f, 3>> corners;
    /// Called with (sites inserted, sites to insert) every 65536 sites and at the end; a
    /// second pass, run when near duplicates were found, counts again from zero.
    std::function<void(std::size_t, std::size_t)> progress;
    /// Threads the build may use, the caller's included. 1, the default, runs on the caller's
    /// thread alone; a C2Triangulation inserts on one thread whatever is asked, and
    /// C2Subdivision::Build makes its records on the others.
    unsigned threads = 1;
};

/// The Delaunay triangulation of samples in the x-z plane, for callers that need only the mesh:
/// about 70 bytes a sample, against the 660 of a C2Subdivision.
///
/// Vertices 0, 1, 2 are the corners of an enclosing triangle, counter-clockwise; every other
/// vertex is a kept sample, numbered in the order it went in, and GetSample gives its position
/// in the caller's array (the heights stay there). Triangle t is the half-edges 3t, 3t + 1 and
/// 3t + 2, counter-clockwise in x-z (x to the right, z up): half-edge 3t + k leaves vertex k of
/// the triangle, and its twin is the same edge seen from the neighbouring triangle, or kNone on
/// the enclosing triangle's sides. Triangles with a corner lie outside the samples' hull.
///
/// The predicates are exact for coordinates that are zero or of magnitude in [1e-30, 1e30];
/// cocircular sites keep the edge they had. A sample is left out (rejected) when x or z is not
/// finite or outside that range, or, with given corners, not strictly inside them; it is
/// dropped as a duplicate when it lies within 1e-5 in x-z of a corner or of a sample kept
/// before it (in the caller's order for a build, in insertion order for Insert). At most 2^28
/// kept samples (std::length_error beyond).
class ZQMATH_API C2Triangulation {
public:
    /// No vertex, triangle or half-edge: the twin of an enclosing side, a corner's sample. An
    /// enumerator, never an object: a caller can bind it to a reference across a DLL's edge.
    enum : std::uint32_t { kNone = 0xFFFFFFFFu };

    /// Triangulates samples[0..count) in a spatial order; sample i is numbered i.
    C2Triangulation(const SFVec3f* samples, std::size_t count,
                    const C2TriangulationOptions& options = {});
    /// The same over a whole vector.
    explicit C2Triangulation(const std::vector<SFVec3f>& samples,
                             const C2TriangulationOptions& options = {});
    /// The enclosing triangle alone (clockwise corners are exchanged), ready for Insert.
    explicit C2Triangulation(const std::array<SFVec3f, 3>& corners);
    /// A deep copy.
    C2Triangulation(const C2Triangulation& t);
    C2Triangulation(C2Triangulation&& t) noexcept;
    ~C2Triangulation();
    C2Triangulation& operator=(const C2Triangulation& t);
    C2Triangulation& operator=(C2Triangulation&& t) noexcept;

    /// Inserts the site (p.x, p.z) as the caller's sample number sample and restores the
    /// Delaunay property. Returns the new vertex, or kNone when the sample is rejected or is a
    /// duplicate (nothing changes but the counts). When made is given, the triangles that the
    /// insertion made or changed are appended to it: every one has the new vertex as a corner,
    /// and no other triangle changed.
    /// The search for the site's triangle starts at triangle from when it is given (one at or
    /// beside the site saves the walk), else at the newest vertex.
    std::uint32_t Insert(const SFVec3f& p, std::uint32_t sample,
                         std::vector<std::uint32_t>* made = nullptr, std::uint32_t from = kNone);
    /// Makes room for count more samples: the arrays then stay in place while they go in, and
    /// room that is never used costs address space only.
    void Reserve(std::size_t count);

    /// Samples kept as vertices.
    std::size_t GetKept() const { return m_kept; }
    /// Samples dropped within 1e-5 of a corner or of a sample kept before them.
    std::size_t GetDuplicates() const { return m_duplicates; }
    /// Samples left out: coordinates unusable, or outside the given corners.
    std::size_t GetRejected() const { return m_rejected; }

    /// The number of vertices: 3 corners plus the kept samples.
    std::size_t GetVertexCount() const;
    /// The site (x, z) of vertex v.
    SFVec2f GetSite(std::uint32_t v) const;
    /// The caller's number of the sample at vertex v; kNone for a corner.
    std::uint32_t GetSample(std::uint32_t v) const { return m_samples[v]; }
    /// Every vertex's sample number (GetVertexCount of them), the corners' kNone first.
    const std::uint32_t* GetSamples() const { return m_samples.data(); }

    /// The number of triangles, those with a corner included: 1 + 2 * GetKept().
    std::size_t GetTriangleCount() const;
    /// The vertices of triangle t, counter-clockwise.
    std::array<std::uint32_t, 3> GetTriangle(std::uint32_t t) const;
    /// The triangle across side k of t (from vertex k to vertex k + 1, mod 3), or kNone.
    std::uint32_t GetNeighbour(std::uint32_t t, int k) const;
    /// True when triangle t has a corner of the enclosing triangle.
    bool HasCorner(std::uint32_t t) const;
    /// The origin vertex of every half-edge (3 * GetTriangleCount() of them).
    const std::uint32_t* GetOrigins() const;
    /// The twin of every half-edge, or kNone.
    const std::uint32_t* GetTwins() const;

    /// The triangles without a corner, as the caller's sample numbers, counter-clockwise.
    std::vector<std::array<std::uint32_t, 3>> GetSampleTriangles() const;
    /// The outline of the triangles without a corner, counter-clockwise, as vertices: the kept
    /// samples' convex hull, collinear sites on it included, except that a hull vertex that a
    /// corner sees past (it lies inside the circle of the vertex and its two neighbours on the
    /// hull) is left inside. Derived corners see past only vertices within about 1e-13 of the
    /// samples' extent from the line through their neighbours; for given corners, the farther
    /// the better. Empty when no triangle lacks a corner or the outline is more than one loop.
    std::vector<std::uint32_t> GetHull() const;

private:
    std::unique_ptr<zq::detail::FlatTriangulation> m_flat;
    std::vector<std::uint32_t> m_samples;
    std::size_t m_kept = 0;
    std::size_t m_duplicates = 0;
    std::size_t m_rejected = 0;
};

#endif
