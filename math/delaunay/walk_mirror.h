// walk_mirror.h: what the constructor's walk reads, packed densely. Not installed.
#ifndef ZQMATH_WALK_MIRROR_H
#define ZQMATH_WALK_MIRROR_H

#include "delaunay/edgelinks.h"
#include "frame/prefault.h"
#include "quadedge.h"
#include "vector/planar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zq::detail {

/// A copy of each primal edge's origin (x, z) and of its Onext and Dprev, one cache line for a
/// record's two primal edges, so that a step of the walk reads a line or three instead of
/// records and vertices spread over memory. It answers exactly as the records would while it
/// is kept up to date: every primal edge whose origin, Onext or Dprev changed is refreshed.
/// As it grows, its lines are laid out again in the spatial order of their edges: a walk then
/// steps between lines near each other in memory.
class WalkMirror {
public:
    /// Primal edge 2 * line + k: edge 2k of the line's record.
    using Id = std::uint32_t;

    /// Gives q's primal edges a place; Refresh fills it.
    void Add(C2QuadEdge* q) {
        if (m_lines.size() % kMappedLines == 0 && m_lines.size() < m_lines.capacity()) {
            // A megabyte's pages at once: cheaper than faulting them in one by one.
            const std::size_t count = std::min(kMappedLines, m_lines.capacity() - m_lines.size());
            Prefault(m_lines.data() + m_lines.size(), count * sizeof(Line));
        }
        EdgeLinks::SetWalkLine(&(*q)[0], static_cast<Id>(m_lines.size()));
        m_lines.push_back(Line{{0.0, 0.0}, {0.0, 0.0}, {0, 0}, {0, 0}, q});
    }
    /// Forgets q's place before q is destroyed.
    void Remove(C2QuadEdge* q) { m_lines[EdgeLinks::WalkLine(&(*q)[0])].record = nullptr; }
    /// Makes room for count more records.
    void Reserve(std::size_t count) { m_lines.reserve(m_lines.size() + count); }
    /// Lays the lines out again in spatial order when they have grown by half since the last
    /// time and the walks since then were long enough to pay for it (they are short on grids
    /// in raster order, say); every place must be up to date.
    void Tidy() {
        if (2 * m_lines.size() >= 3 * m_laidOut && m_lines.size() >= kFirstLayout &&
            m_steps >= kStepsPerLine * m_lines.size()) {
            LayOut();
            m_laidOut = m_lines.size();
            m_steps = 0;
        }
    }
    /// Copies what the walk reads of primal edge e from the records.
    void Refresh(const C2Edge* e) {
        const Id id = IdOf(e);
        Line& line = m_lines[id >> 1];
        const SFVec2f org = EdgeLinks::Org2d(e);
        line.x[id & 1] = org.x;
        line.z[id & 1] = org.y;
        line.onext[id & 1] = IdOf(EdgeLinks::Onext(e));
        line.dprev[id & 1] = IdOf(EdgeLinks::Dprev(e));
    }
    /// The walk of C2Subdivision::Locate from start, step by step the same: an edge of the
    /// triangle that holds x (or with an end closer than limit), or null after maxSteps steps.
    C2Edge* Locate(const SFVec2f& x, const C2Edge* start, int maxSteps, double limit) {
        Id e = IdOf(start);
        for (int step = 0; step < maxSteps; ++step, ++m_steps) {
            const SFVec2f org = Org(e);
            const SFVec2f dest = Org(e ^ 1);
            if (Near(x, org, limit) || Near(x, dest, limit)) {
                return Edge(e);
            }
            if (Ccw(x, dest, org)) {
                e ^= 1;
                continue;
            }
            const Line& line = m_lines[e >> 1];
            const Id onext = line.onext[e & 1];
            const Id dprev = line.dprev[e & 1];
            // Both lines a step may read are fetched at once.
            __builtin_prefetch(&m_lines[dprev >> 1]);
            if (!Ccw(x, Org(onext ^ 1), Org(onext))) {
                e = onext;
            } else if (!Ccw(x, Org(dprev ^ 1), Org(dprev))) {
                e = dprev;
            } else {
                return Edge(e);
            }
        }
        return nullptr;
    }

private:
    /// Smaller copies fit the caches as they are.
    static constexpr std::size_t kFirstLayout = 4096;
    /// Lines mapped at a time as the copy grows.
    static constexpr std::size_t kMappedLines = 16384;
    /// Steps a line since the last layout from which a new one costs less than it saves.
    static constexpr std::size_t kStepsPerLine = 4;

    struct alignas(64) Line {
        double x[2];
        double z[2];
        Id onext[2];
        Id dprev[2];
        C2QuadEdge* record;
    };

    static Id IdOf(const C2Edge* e) {
        return 2 * EdgeLinks::WalkLine(e) + static_cast<Id>(EdgeLinks::Index(e) >> 1);
    }
    SFVec2f Org(Id e) const { return SFVec2f(m_lines[e >> 1].x[e & 1], m_lines[e >> 1].z[e & 1]); }
    C2Edge* Edge(Id e) const { return &(*m_lines[e >> 1].record)[static_cast<short>(2 * (e & 1))]; }
    /// Distance(x, p) < limit, the square root taken only where the square cannot decide.
    static bool Near(const SFVec2f& x, const SFVec2f& p, double limit) {
        const double dx = x.x - p.x;
        const double dy = x.y - p.y;
        const double square = dx * dx + dy * dy;
        // The rounded root is monotonic: a square beyond this bound has a root of limit or more.
        return square <= 1.000001 * limit * limit && std::sqrt(square) < limit;
    }

    /// The lines of live records sorted by the Morton code of their edges' midpoints, each
    /// record told its new line, the links renumbered.
    void LayOut() {
        double low[2] = {m_lines[0].x[0], m_lines[0].z[0]};
        double high[2] = {low[0], low[1]};
        for (const Line& line : m_lines) {
            for (int k = 0; k < 2; ++k) {
                low[0] = std::fmin(low[0], line.x[k]);
                high[0] = std::fmax(high[0], line.x[k]);
                low[1] = std::fmin(low[1], line.z[k]);
                high[1] = std::fmax(high[1], line.z[k]);
            }
        }
        // Lines of removed records sort last, and are dropped once in place.
        std::vector<std::pair<std::uint64_t, Id>> order;
        order.reserve(m_lines.size());
        std::size_t live = 0;
        for (Id i = 0; i < m_lines.size(); ++i) {
            const Line& line = m_lines[i];
            const double mid[2] = {line.x[0] / 2 + line.x[1] / 2, line.z[0] / 2 + line.z[1] / 2};
            const bool removed = line.record == nullptr;
            live += removed ? 0 : 1;
            order.emplace_back(removed ? ~std::uint64_t(0) : Morton(mid, low, high), i);
        }
        std::sort(order.begin(), order.end());
        std::vector<Id> moved(m_lines.size(), 0);
        for (Id i = 0; i < order.size(); ++i) {
            moved[order[i].second] = i;
        }
        order = {};
        // Renumbered where they lie, records told in the order they were made, which is
        // roughly their order in memory; then each line is moved along its cycle.
        for (Id i = 0; i < m_lines.size(); ++i) {
            Line& line = m_lines[i];
            for (int k = 0; k < 2; ++k) {
                line.onext[k] = 2 * moved[line.onext[k] >> 1] + (line.onext[k] & 1);
                line.dprev[k] = 2 * moved[line.dprev[k] >> 1] + (line.dprev[k] & 1);
            }
            if (line.record != nullptr) {
                EdgeLinks::SetWalkLine(&(*line.record)[0], moved[i]);
            }
        }
        for (Id i = 0; i < m_lines.size(); ++i) {
            while (moved[i] != i) {
                std::swap(m_lines[i], m_lines[moved[i]]);
                std::swap(moved[i], moved[moved[i]]);
            }
        }
        m_lines.resize(live);
    }
    /// The Morton code of p's place in the box [low, high], 21 bits a coordinate.
    static std::uint64_t Morton(const double p[2], const double low[2], const double high[2]) {
        std::uint64_t code = 0;
        for (int k = 0; k < 2; ++k) {
            const double span = high[k] > low[k] ? high[k] - low[k] : 1.0;
            const auto cell = static_cast<std::uint64_t>((p[k] - low[k]) / span * 2097151.0);
            for (int bit = 0; bit < 21; ++bit) {
                code |= ((cell >> bit) & 1u) << (2 * bit + k);
            }
        }
        return code;
    }

    std::vector<Line> m_lines;
    /// The number of lines at the last layout.
    std::size_t m_laidOut = 0;
    /// Steps walked since the last layout.
    std::size_t m_steps = 0;
};

} // namespace zq::detail

#endif
