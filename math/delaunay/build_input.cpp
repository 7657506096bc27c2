// The samples a triangulation takes: usable coordinates inside the enclosing triangle.
#include "delaunay/build_input.h"
#include "delaunay/uninitialized.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zq::detail {

namespace {

/// Magnitudes of usable coordinates (besides zero): within them the predicates never overflow
/// and their exact arithmetic never underflows.
constexpr double kSmallest = 1e-30;
constexpr double kLargest = 1e30;
/// The derived enclosing triangle's reach against the bounding box's larger side: so far that
/// a corner can only see past a hull vertex that lies within about 1e-13 sides of the line
/// through its neighbours on the hull, so that the triangles without a corner fill the hull.
constexpr double kTriangleScale = 1e12;
/// The least reach, where the usable range leaves no room for the full one.
constexpr double kLeastScale = 10.0;

/// False for NaN, infinities and magnitudes outside the usable range.
bool InRange(double v) {
    const double m = std::fabs(v);
    return m == 0.0 || (m >= kSmallest && m <= kLargest);
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
    const double room = kLargest - std::max(std::fabs(cx), std::fabs(cz));
    const double r = std::max(kLeastScale * side, std::min(kTriangleScale * side, room));
    // The box lies well inside: its corners are at most side / 2 from the centre, and the
    // slanted sides pass at least 4.75 sides from it at the box's top.
    return {SFVec3f(cx - r, 0.0, cz - r), SFVec3f(cx + r, 0.0, cz - r), SFVec3f(cx, 0.0, cz + r)};
}

} // namespace

bool Usable(const SFVec3f& p) {
    return InRange(p.x) && InRange(p.z);
}

Corners EnclosingCorners(const SFVec3f* samples, std::size_t count,
                         const C2TriangulationOptions& options) {
    if (!options.corners) {
        return AroundBounds(samples, count);
    }
    Corners c = *options.corners;
    if (Orientation(SiteOf(c[0]), SiteOf(c[1]), SiteOf(c[2])) < 0) {
        std::swap(c[1], c[2]);
    }
    return c;
}

bool StrictlyInside(const Corners& c, const SFVec3f& p) {
    const Site s = SiteOf(p);
    return Orientation(SiteOf(c[0]), SiteOf(c[1]), s) > 0 &&
           Orientation(SiteOf(c[1]), SiteOf(c[2]), s) > 0 &&
           Orientation(SiteOf(c[2]), SiteOf(c[0]), s) > 0;
}

std::vector<std::uint32_t> Candidates(const SFVec3f* samples, std::size_t count,
                                      const Corners& corners, bool givenCorners) {
    std::vector<std::uint32_t> candidates;
    ReserveLarge(candidates, count);
    for (std::size_t i = 0; i < count; ++i) {
        if (Usable(samples[i]) && (!givenCorners || StrictlyInside(corners, samples[i]))) {
            candidates.push_back(static_cast<std::uint32_t>(i));
        }
    }
    return candidates;
}

} // namespace zq::detail
