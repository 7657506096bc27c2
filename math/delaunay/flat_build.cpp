// The bulk build: the usable samples in a spatial order, near duplicates dropped by a second
// pass.
#include "delaunay/flat_build.h"

#include "delaunay/near_duplicates.h"
#include "delaunay/spatial_order.h"
#include "delaunay/uninitialized.h"

#include <stdexcept>
#include <utility>

namespace zq::detail {

namespace {

/// Edges below this may join duplicates: a hair above the distance, so that the rounding of
/// DistanceTo cannot hide a pair.
constexpr double kShortEdge = kSameSiteDistance * (1.0 + 1e-9);
/// The most samples one build takes: the flat triangulation counts half-edges in 32 bits.
constexpr std::size_t kMostSites = std::size_t(1) << 28;
/// How many insertions pass between two progress reports.
constexpr std::size_t kProgressStep = 65536;

/// The corners, then the candidates in spatial order; returns that order.
std::vector<Site> Gathered(const Corners& corners, const SFVec3f* samples,
                           const std::vector<std::uint32_t>& candidates,
                           std::vector<std::uint32_t>& order) {
    std::vector<Site> sites;
    ReserveLarge(sites, 3 + candidates.size());
    for (std::uint32_t i : candidates) {
        sites.push_back(SiteOf(samples[i]));
    }
    order = InsertionOrder(sites);
    sites.assign({SiteOf(corners[0]), SiteOf(corners[1]), SiteOf(corners[2])});
    // Gathered in one pass, the samples' reads overlap instead of each stalling an insertion.
    for (std::uint32_t k : order) {
        sites.push_back(SiteOf(samples[candidates[k]]));
    }
    return sites;
}

/// Inserts the candidates in spatial order into the triangle of the corners; returns the
/// candidates (indices into them) that met a vertex with the same x and z, or end an edge
/// shorter than the duplicate distance. Any two vertices closer than that are joined by a path
/// of edges no longer than their distance (a pair whose diametral disk is empty is a Delaunay
/// edge; otherwise a vertex in the disk splits it into two shorter pairs), so no close pair
/// escapes.
std::vector<std::uint32_t> Triangulate(FlatBuild& b, const SFVec3f* samples,
                                       const C2TriangulationOptions& options) {
    std::vector<Site> sites = Gathered(b.corners, samples, b.kept, b.order);
    b.flat = std::make_unique<FlatTriangulation>(std::move(sites), kShortEdge);
    std::vector<std::uint32_t> close;
    const std::uint32_t n = static_cast<std::uint32_t>(b.order.size());
    for (std::uint32_t j = 0; j < n; ++j) {
        if (options.progress && j % kProgressStep == 0 && j > 0) {
            options.progress(j, n);
        }
        const std::uint32_t v = b.flat->Insert(3 + j);
        if (v != 3 + j) {
            close.push_back(b.order[j]);
            if (v >= 3) {
                close.push_back(b.order[v - 3]);
            }
        }
    }
    if (options.progress) {
        options.progress(n, n);
    }
    for (const auto& edge : b.flat->ShortEdges()) {
        for (std::uint32_t v : {edge.first, edge.second}) {
            if (v >= 3) {
                close.push_back(b.order[v - 3]);
            }
        }
    }
    b.flat->ForgetShortEdges();
    return close;
}

} // namespace

FlatBuild BuildFlat(const SFVec3f* samples, std::size_t count,
                    const C2TriangulationOptions& options,
                    const std::function<void(std::size_t)>& started) {
    if (count > 0xFFFFFFFFu) {
        throw std::length_error("C2Triangulation: too many samples");
    }
    FlatBuild b;
    b.corners = EnclosingCorners(samples, count, options);
    b.kept = Candidates(samples, count, b.corners, options.corners.has_value());
    if (b.kept.size() > kMostSites) {
        throw std::length_error("C2Triangulation: too many samples");
    }
    b.rejected = count - b.kept.size();
    if (started) {
        started(b.kept.size());
    }
    std::vector<std::uint32_t> close = Triangulate(b, samples, options);
    if (!close.empty()) {
        // Dropping vertices from a triangulation is not supported: the kept ones start over,
        // the first triangulation freed before the second is made.
        std::vector<std::uint32_t> left =
            WithoutNearDuplicates(b.corners, samples, b.kept, std::move(close), kSameSiteDistance);
        b.duplicates = b.kept.size() - left.size();
        b.kept = std::move(left);
        b.flat.reset();
        Triangulate(b, samples, options);
    }
    return b;
}

} // namespace zq::detail
