// c2subdivision.h: the Delaunay triangulation of height samples.
#ifndef ZQMATH_C2SUBDIVISION_H
#define ZQMATH_C2SUBDIVISION_H

#include "c2triangulation.h"
#include "quadedge.h"
#include "sfvec2f.h"
#include "sfvec3f.h"
#include "zqexport.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zq::detail {
class QuadEdgeAssembly;
class WalkMirror;
} // namespace zq::detail

/// How C2Subdivision::Build runs: the options of the flat triangulation it starts from.
using C2SubdivisionOptions = C2TriangulationOptions;

struct C2SubdivisionBuild;

/// The Delaunay triangulation of 3D samples in the x-z plane, each vertex keeping its height y,
/// built by inserting the samples one by one into a caller's enclosing triangle.
/// A sample that Locate cannot place, or that lies within 1e-5 of an end of the edge Locate
/// returns, is dropped silently. Copies are shallow: they share the records, the edge list and
/// the points (the last copy to go frees them).
///
/// Beyond the 16-bit NumEdges and GetEdge, large terrains are read through GetEdgeCount and
/// GetEdgeAt (the same list, by std::size_t), GetVertexCount and GetVertex (the corners a, b,
/// c at 0, 1, 2, then every inserted sample in insertion order) and GetTriangles.
///
/// The constructor and every member but Build run on the calling thread alone: they start no
/// thread.
class ZQMATH_API C2Subdivision {
public:
    /// Builds the triangle a, b, c (counter-clockwise in x-z, enclosing every sample; taken
    /// exactly as given) and inserts *points in order. A null points gives the bare triangle.
    C2Subdivision(std::vector<SFVec3f>* points, const SFVec3f& a, const SFVec3f& b,
                  const SFVec3f& c);
    /// The C2Triangulation of samples[0..count) with these options (the same triangles), as
    /// quad-edge records. Vertices are the corners, then the kept samples in the caller's
    /// order. Only the enclosing triangle's three edges are marked boundary. Asked for two
    /// threads or more, a build of 4096 samples or more makes the records and maps the result's
    /// memory on one more thread beside the insertions, then shares the linking with it. About
    /// 660 bytes a sample stay with the subdivision, and about 80 more are needed while it is
    /// built. On Linux, every array of 4 MB or more (the records of about 7000 samples) is
    /// asked for in 2 MB pages.
    static C2SubdivisionBuild Build(const SFVec3f* samples, std::size_t count,
                                    const C2SubdivisionOptions& options);
    /// Build over a whole vector.
    static C2SubdivisionBuild Build(const std::vector<SFVec3f>& samples,
                                    const C2SubdivisionOptions& options);
    /// Shallow: shares the records, edge list and points; its own vertex array.
    C2Subdivision(const C2Subdivision& s);
    /// Clears C2Edge's remembered subdivision when it is this one; the last copy frees the
    /// records and the points.
    ~C2Subdivision();
    /// The same shallow copy into this object.
    C2Subdivision& operator=(const C2Subdivision& s);

    /// Appends q to the edge list, which then owns it (a record made with new); returns the
    /// number of entries. A null q is appended as a null entry.
    int AddEdge(C2QuadEdge* q);
    /// The number of records, truncated to 16 bits as callers have always received it.
    short NumEdges() const;
    /// Record i of the edge list in creation order; null when i is out of range.
    C2QuadEdge* GetEdge(short i) const;
    /// Removes q's first entry from the edge list, keeping the order of the rest, and destroys
    /// q; a record that the list does not hold is left alone.
    void DeleteEdge(C2QuadEdge* q);

    /// The number of records in the edge list.
    std::size_t GetEdgeCount() const;
    /// Record i of the edge list in creation order; null when i is out of range.
    C2QuadEdge* GetEdgeAt(std::size_t i) const;
    /// The number of vertices: 3 corners plus the inserted samples.
    std::size_t GetVertexCount() const;
    /// Vertex i (0, 1, 2 the corners a, b, c; then the samples); null when out of range.
    SFVec3f* GetVertex(std::size_t i) const;
    /// Every triangle as three GetVertex indices, counter-clockwise in x-z. Those with a
    /// corner of the enclosing triangle are included only when includeCorners is set.
    std::vector<std::array<std::size_t, 3>> GetTriangles(bool includeCorners) const;

private:
    friend class C2QuadEdge;
    friend class zq::detail::QuadEdgeAssembly;

    /// A new record appended to the edge list.
    C2QuadEdge* NewRecord();
    /// A copy of p appended to the vertex list.
    SFVec3f* NewVertex(const SFVec3f& p);
    /// Destroys every record of the edge list and empties it. Nothing calls it.
    void DeleteEdgeList();
    /// An edge of the triangle that holds x, from the starting edge in at most 50000 steps;
    /// null when the walk does not end.
    C2Edge* Locate(const SFVec2f& x) const;
    /// Inserts p and restores the Delaunay property; index is neither read nor written.
    void InsertSite(const SFVec3f& p, short& index);
    /// Joins site to every corner of the face left of e, the first new edge becoming the
    /// starting edge, then swaps each edge whose apex is right of it and whose circle holds
    /// the site.
    void ConnectSite(C2Edge* e, SFVec3f* site);
    /// Edge 0 of a new record, given its place in the walk's copy.
    C2Edge* NewWalkedEdge();
    /// Brings the walk's copy up to date around the site whose edge spoke leaves it.
    void RefreshWalk(C2Edge* spoke);
    /// The first sample no shorter than (p.x, 0, p.y), or the zero vector when there is none;
    /// the two doubles are not used. Nothing calls it.
    SFVec3f PointSolutionFor(SFVec2f p, double, double) const;

    std::shared_ptr<zq::detail::EdgeStore> m_store;
    C2Edge* m_startingEdge;
    SFVec3f m_cornerA;
    SFVec3f m_cornerB;
    SFVec3f m_cornerC;
    std::vector<SFVec3f*> m_vertices;
    /// What Locate walks over while the constructor inserts; null otherwise.
    zq::detail::WalkMirror* m_walk = nullptr;
};

/// What C2Subdivision::Build made, with the fate of every sample.
struct C2SubdivisionBuild {
    /// The triangulation, vertices 3.. the kept samples in the caller's order.
    C2Subdivision subdivision;
    /// Samples triangulated.
    std::size_t kept;
    /// Samples dropped within 1e-5 of a corner or of an earlier kept sample.
    std::size_t duplicates;
    /// Samples left out: x or z not finite, or nonzero with a magnitude outside [1e-30, 1e30],
    /// or a site not strictly inside the caller's triangle (corners in a line enclose none).
    /// Heights take no part in the triangulation and are kept as they are, NaN included.
    std::size_t rejected;
};

#endif
