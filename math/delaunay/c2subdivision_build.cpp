// C2Subdivision::Build: the spatially ordered, exact construction for large terrains.
#include "c2subdivision.h"

#include "delaunay/flat_triangulation.h"
#include "delaunay/near_duplicates.h"
#include "delaunay/quadedge_assembly.h"
#include "delaunay/robust_predicates.h"
#include "delaunay/spatial_order.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <future>
#include <stdexcept>
#include <utility>

namespace {

using zq::detail::Site;
using Corners = std::array<SFVec3f, 3>;

/// Closer than this in x-z, a sample duplicates an earlier one.
constexpr double kSameSiteDistance = 1e-5;
/// Edges below this may join duplicates: a hair above the distance, so that the rounding of
/// DistanceTo cannot hide a pair.
constexpr double kShortEdge = kSameSiteDistance * (1.0 + 1e-9);
/// Magnitudes of usable coordinates (besides zero): within them the predicates never overflow
/// and their exact arithmetic never underflows.
constexpr double kSmallest = 1e-30;
constexpr double kLargest = 1e30;
/// The most samples one build takes: the flat triangulation counts half-edges in 32 bits.
constexpr std::size_t kMostSites = std::size_t(1) << 28;
/// Smaller builds stay on the caller's thread: starting another costs more than it saves.
constexpr std::size_t kSmallestThreadedBuild = 4096;
/// How many insertions pass between two progress reports.
constexpr std::size_t kProgressStep = 65536;
/// The derived enclosing triangle's size against the bounding box's larger side.
constexpr double kTriangleScale = 10.0;

Site At(const SFVec3f& p) {
    return {p.x, p.z};
}

/// False for NaN, infinities and magnitudes outside the usable range.
bool InRange(double v) {
    const double m = std::fabs(v);
    return m == 0.0 || (m >= kSmallest && m <= kLargest);
}

bool Usable(const SFVec3f& p) {
    return InRange(p.x) && InRange(p.z);
}

/// A triangle around the usable samples' bounding box, at height 0, counter-clockwise.
Corners AroundBounds(const SFVec3f* samples, std::size_t count) {
    double minX = 0.0, maxX = 0.0, minZ = 0.0, maxZ = 0.0;
    bool any = false;
    for (std::size_t i = 0; i < count; ++i) {
        const SFVec3f& p = samples[i];
        if (Usable(p)) {
            minX = any ? std::min(minX, p.x) : p.x;
            maxX = any ? std::max(maxX, p.x) : p.x;
            minZ = any ? std::min(minZ, p.z) : p.z;
            maxZ = any ? std::max(maxZ, p.z) : p.z;
            any = true;
        }
    }
    const double cx = 0.5 * (minX + maxX), cz = 0.5 * (minZ + maxZ);
    // A box of one point still needs a triangle of some size around it.
    const double side =
        std::max({maxX - minX, maxZ - minZ, 1e-3 * std::fabs(cx), 1e-3 * std::fabs(cz), 1.0});
    const double r = kTriangleScale * side;
    // The box lies well inside: its corners are at most side / 2 from the centre, and the
    // slanted sides pass 4.75 sides from it at the box's top.
    return {SFVec3f(cx - r, 0.0, cz - r), SFVec3f(cx + r, 0.0, cz - r), SFVec3f(cx, 0.0, cz + r)};
}

/// The caller's triangle, its last two corners exchanged when they were given clockwise.
Corners CounterClockwise(Corners c) {
    if (zq::detail::Orientation(At(c[0]), At(c[1]), At(c[2])) < 0) {
        std::swap(c[1], c[2]);
    }
    return c;
}

bool StrictlyInside(const Corners& c, const SFVec3f& p) {
    using zq::detail::Orientation;
    const Site s = At(p);
    return Orientation(At(c[0]), At(c[1]), s) > 0 && Orientation(At(c[1]), At(c[2]), s) > 0 &&
           Orientation(At(c[2]), At(c[0]), s) > 0;
}

/// The positions of the samples to triangulate, in the caller's order.
std::vector<std::size_t> Candidates(const SFVec3f* samples, std::size_t count,
                                    const Corners& corners, bool givenCorners) {
    std::vector<std::size_t> candidates;
    candidates.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (Usable(samples[i]) && (!givenCorners || StrictlyInside(corners, samples[i]))) {
            candidates.push_back(i);
        }
    }
    return candidates;
}

/// A flat triangulation of candidates, and the candidates that may lie too close to others.
struct Triangulated {
    /// Vertex 3 + j of flat is candidate order[j], at height heights[j].
    std::vector<std::uint32_t> order;
    std::vector<double> heights;
    zq::detail::FlatTriangulation flat;
    /// Candidates that met a vertex with the same x and z, or end an edge shorter than the
    /// duplicate distance. Any two vertices closer than kSameSiteDistance are joined by a path
    /// of edges no longer than their distance (a pair whose diametral disk is empty is a
    /// Delaunay edge; otherwise a vertex in the disk splits it into two shorter pairs), so no
    /// close pair escapes.
    std::vector<std::size_t> close;
};

/// The corners, then the candidates in spatial order; returns that order and the candidates'
/// heights in it.
std::vector<Site> Gathered(const Corners& corners, const SFVec3f* samples,
                           const std::vector<std::size_t>& candidates,
                           std::vector<std::uint32_t>& order, std::vector<double>& heights) {
    std::vector<Site> sites;
    sites.reserve(3 + candidates.size());
    for (std::size_t i : candidates) {
        sites.push_back(At(samples[i]));
    }
    order = zq::detail::InsertionOrder(sites);
    sites.assign({At(corners[0]), At(corners[1]), At(corners[2])});
    heights.reserve(order.size());
    // Gathered in one pass, the samples' reads overlap instead of each stalling an insertion.
    // Candidates rise: when the last is at its own position, every one is.
    const bool identity = candidates.empty() || candidates.back() + 1 == candidates.size();
    for (std::uint32_t k : order) {
        const SFVec3f& p = samples[identity ? k : candidates[k]];
        sites.push_back(At(p));
        heights.push_back(p.y);
    }
    return sites;
}

/// Inserts the candidates in spatial order into the triangle of the corners.
Triangulated Triangulate(const Corners& corners, const SFVec3f* samples,
                         const std::vector<std::size_t>& candidates,
                         const std::function<void(std::size_t, std::size_t)>& progress) {
    std::vector<std::uint32_t> order;
    std::vector<double> heights;
    std::vector<Site> sites = Gathered(corners, samples, candidates, order, heights);
    Triangulated t{std::move(order),
                   std::move(heights),
                   zq::detail::FlatTriangulation(std::move(sites), kShortEdge),
                   {}};
    const std::size_t n = t.order.size();
    for (std::uint32_t j = 0; j < n; ++j) {
        if (progress && j % kProgressStep == 0 && j > 0) {
            progress(j, n);
        }
        const std::uint32_t v = t.flat.Insert(3 + j);
        if (v != 3 + j) {
            t.close.push_back(t.order[j]);
            if (v >= 3) {
                t.close.push_back(t.order[v - 3]);
            }
        }
    }
    if (progress) {
        progress(n, n);
    }
    for (const auto& edge : t.flat.ShortEdges()) {
        for (std::uint32_t v : {edge.first, edge.second}) {
            if (v >= 3) {
                t.close.push_back(t.order[v - 3]);
            }
        }
    }
    return t;
}

} // namespace

C2SubdivisionBuild C2Subdivision::Build(const SFVec3f* samples, std::size_t count,
                                        const C2SubdivisionOptions& options) {
    const bool given = options.corners.has_value();
    const Corners corners =
        given ? CounterClockwise(*options.corners) : AroundBounds(samples, count);
    std::vector<std::size_t> candidates = Candidates(samples, count, corners, given);
    if (candidates.size() > kMostSites) {
        throw std::length_error("C2Subdivision::Build: too many samples");
    }
    C2SubdivisionBuild result{C2Subdivision(nullptr, corners[0], corners[1], corners[2]), 0, 0,
                              count - candidates.size()};
    // The records are made, and the assembly's other memory mapped, on a second thread while
    // the sites go in, and on this one too once they are: fresh memory costs a page fault per
    // page, and those faults then overlap the insertions.
    zq::detail::QuadEdgeAssembly assembly(candidates.size());
    const std::launch policy = candidates.size() < kSmallestThreadedBuild
                                   ? std::launch::deferred
                                   : std::launch::async | std::launch::deferred;
    auto made = std::async(policy, [&assembly] { assembly.Prepare(); });
    Triangulated t = Triangulate(corners, samples, candidates, options.progress);
    if (!t.close.empty()) {
        // Dropping vertices from a triangulation is not supported: the kept ones start over.
        const std::vector<std::size_t> left = zq::detail::WithoutNearDuplicates(
            corners, samples, candidates, std::move(t.close), kSameSiteDistance);
        result.duplicates = candidates.size() - left.size();
        candidates = left;
        t = Triangulate(corners, samples, candidates, options.progress);
    }
    result.kept = candidates.size();
    assembly.Prepare();
    made.get();
    assembly.Assemble(result.subdivision, t.flat, corners, t.heights, t.order);
    return result;
}

C2SubdivisionBuild C2Subdivision::Build(const std::vector<SFVec3f>& samples,
                                        const C2SubdivisionOptions& options) {
    return Build(samples.data(), samples.size(), options);
}
