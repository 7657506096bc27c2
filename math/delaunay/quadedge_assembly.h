// quadedge_assembly.h: a flat triangulation turned into a subdivision's records. Not installed.
#ifndef ZQMATH_QUADEDGE_ASSEMBLY_H
#define ZQMATH_QUADEDGE_ASSEMBLY_H

#include "c2subdivision.h"
#include "delaunay/edgestore.h"
#include "delaunay/flat_triangulation.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace zq::detail {

/// The quad-edge records of a flat triangulation, linked straight from its triangles: no
/// Splice, no walk. The records are made first, before the triangulation is known, so that
/// other threads can make them meanwhile.
class QuadEdgeAssembly {
public:
    /// Places for the records and vertex copies of a triangulation of up to sites sites, in a
    /// store of their own, and for the assembly's own tables; Assemble's loops run on a second
    /// thread too when helped.
    QuadEdgeAssembly(std::size_t sites, bool helped);

    /// Makes the records, then maps the pages of the vertex copies and tables, a block at a
    /// time, until nothing is left. Several threads may call it at once; every call must have
    /// returned before Assemble.
    void Prepare();

    /// Gives s the store, filled. Vertex v < 3 of flat is corners[v]; vertex 3 + j, at height
    /// heights[j], is the k-th sample kept, k = order[j], and becomes s's vertex 3 + k, after
    /// the corners. One record per edge, in the order of the triangles; the enclosing triangle's
    /// edges are marked boundary; the starting edge ends at the last site inserted.
    void Assemble(C2Subdivision& s, const FlatTriangulation& flat,
                  const std::array<SFVec3f, 3>& corners, const std::vector<double>& heights,
                  const std::vector<std::uint32_t>& order);

private:
    /// Adds [begin, begin + bytes) to the memory that Prepare maps, in blocks.
    void AddFresh(void* begin, std::size_t bytes);
    /// Fills s's vertex list with the vertices of flat, at their heights, laid out in the
    /// store's point run by flat index.
    void Vertices(C2Subdivision& s, const FlatTriangulation& flat,
                  const std::array<SFVec3f, 3>& corners, const std::vector<double>& heights,
                  const std::vector<std::uint32_t>& order);
    /// Gives each half-edge the code of its directed edge: twice its record's number, plus one
    /// for edge 2; the records left over are destroyed.
    void Number(const FlatTriangulation& flat);
    /// The edge k places after the directed edge of a code in its record, found from the code
    /// alone: reading the record to find it would stall on a cache miss.
    C2Edge* EdgeOf(std::uint32_t code, int k = 0) const;
    /// Sets the origin and the links of the directed edges of the half-edges [begin, end),
    /// and of the reverses of the enclosing triangle's edges among them.
    void Fill(const FlatTriangulation& flat, std::size_t begin, std::size_t end) const;
    /// Sets the Onext links of h's directed edge and of its dual leaving h's triangle.
    void LinkAroundTriangle(std::size_t h) const;
    /// Sets the Onext links of the reverse of the outer edge from corner c, and of its dual
    /// leaving the outer face.
    void LinkAroundOuterFace(std::size_t c) const;

    std::shared_ptr<EdgeStore> m_store;
    std::size_t m_records;
    bool m_helped;
    /// The first block of Prepare's work, records then fresh memory, that no thread has taken.
    std::atomic<std::size_t> m_nextBlock{0};
    /// The blocks of fresh memory that Prepare maps after the records.
    std::vector<std::pair<void*, std::size_t>> m_fresh;
    /// The subdivision's vertex list, until Assemble hands it over.
    std::vector<SFVec3f*> m_vertices;
    /// The code of each half-edge's directed edge.
    std::unique_ptr<std::uint32_t[]> m_codeOf;
    /// The edges of the enclosing triangle, by origin: corner 0 to 1, 1 to 2, 2 to 0.
    std::array<C2Edge*, 3> m_outer{};
};

} // namespace zq::detail

#endif
