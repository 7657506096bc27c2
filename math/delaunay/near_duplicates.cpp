// The near-duplicate rule of C2Subdivision::Build: the earliest sample in the caller's order
// wins.
#include "delaunay/near_duplicates.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>
#include <utility>

namespace zq::detail {

namespace {

/// Kept points bucketed by cells of the duplicate distance: a point's close neighbours lie in
/// its own cell and the eight around it.
class CellGrid {
public:
    explicit CellGrid(double distance) : m_distance(distance) {}

    /// True when a kept point lies within the distance of p.
    bool HasNear(const SFVec3f& p) const {
        const double cx = std::floor(p.x / m_distance);
        const double cz = std::floor(p.z / m_distance);
        for (double dx = -1; dx <= 1; ++dx) {
            for (double dz = -1; dz <= 1; ++dz) {
                const auto found = m_cells.find({cx + dx, cz + dz});
                if (found == m_cells.end()) {
                    continue;
                }
                for (const SFVec3f* q : found->second) {
                    if (p.XZ().DistanceTo(q->XZ()) < m_distance) {
                        return true;
                    }
                }
            }
        }
        return false;
    }
    /// Keeps p.
    void Add(const SFVec3f* p) {
        m_cells[{std::floor(p->x / m_distance), std::floor(p->z / m_distance)}].push_back(p);
    }

private:
    using Cell = std::pair<double, double>;
    struct CellHash {
        std::size_t operator()(const Cell& c) const {
            return std::hash<double>()(c.first) * 31u + std::hash<double>()(c.second);
        }
    };
    double m_distance;
    std::unordered_map<Cell, std::vector<const SFVec3f*>, CellHash> m_cells;
};

} // namespace

std::vector<std::uint32_t> WithoutNearDuplicates(const std::array<SFVec3f, 3>& corners,
                                                 const SFVec3f* samples,
                                                 const std::vector<std::uint32_t>& candidates,
                                                 std::vector<std::uint32_t> close,
                                                 double distance) {
    std::sort(close.begin(), close.end());
    close.erase(std::unique(close.begin(), close.end()), close.end());
    CellGrid kept(distance);
    for (const SFVec3f& corner : corners) {
        kept.Add(&corner);
    }
    std::vector<bool> dropped(candidates.size(), false);
    for (std::uint32_t k : close) {
        const SFVec3f* p = &samples[candidates[k]];
        dropped[k] = kept.HasNear(*p);
        if (!dropped[k]) {
            kept.Add(p);
        }
    }
    std::vector<std::uint32_t> left;
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        if (!dropped[k]) {
            left.push_back(candidates[k]);
        }
    }
    return left;
}

} // namespace zq::detail
