// heightmap_mesher.cpp: the insertion loop, each triangle's worst pixel kept by triangle index.
#include "heightmap_mesher.h"

#include "candidate_queue.h"
#include "triangle_scan.h"

#include <c2triangulation.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace zq::tool {
namespace {

/// Half the side of the enclosing triangle: so far out that the circle through a side of the
/// raster and a corner bulges into the raster by less than a pixel, so that every triangle
/// over the raster is made of pixels.
constexpr float kFar = 1099511627776.0f; // 2^40

/// Vertices 0, 1 and 2 are the enclosing triangle's corners.
constexpr std::uint32_t kCorners = 3;

SFVec3f Site(const Raster& raster, std::uint32_t pixel) {
    return SFVec3f(static_cast<float>(pixel % raster.width), 0.0f,
                   static_cast<float>(pixel / raster.width));
}

/// The mesh of a raster at least 2 x 2 and what each triangle still misses.
class GreedyInsertion {
public:
    GreedyInsertion(const Raster& raster, const MeshLimits& limits)
        : m_raster(raster), m_limits(limits),
          m_threshold(limits.error * static_cast<double>(raster.maximum)),
          m_triangulation(std::array<SFVec3f, 3>{
              SFVec3f(-kFar, 0, -kFar), SFVec3f(3 * kFar, 0, -kFar), SFVec3f(-kFar, 0, 3 * kFar)}) {
        // Each vertex adds two triangles to the enclosing one: the arrays need not grow. Room
        // for every pixel would crowd a 32-bit address space; there they grow as needed.
        if constexpr (sizeof(void*) >= 8) {
            const std::size_t vertices = std::min(raster.pixels.size(), limits.vertices);
            const std::size_t most = 1 + 2 * vertices;
            m_triangulation.Reserve(vertices);
            m_error.reserve(most);
            m_candidate.reserve(most);
            m_queue.Reserve(most);
        }
    }

    /// Inserts the corner pixels, then the worst pixel while one is beyond the error.
    void Run() {
        const std::uint32_t right = static_cast<std::uint32_t>(m_raster.width - 1);
        const std::uint32_t bottom = static_cast<std::uint32_t>(m_raster.pixels.size() - 1);
        for (std::uint32_t pixel : {0u, right, bottom - right, bottom}) {
            m_triangulation.Insert(Site(m_raster, pixel), pixel);
        }
        for (std::uint32_t t = 0; t < m_triangulation.GetTriangleCount(); ++t) {
            Rescan(t);
        }
        std::vector<std::uint32_t> made;
        while (!m_queue.Empty() && m_triangles + 2 <= m_limits.triangles &&
               m_triangulation.GetKept() < m_limits.vertices) {
            const std::uint32_t worst = m_queue.Top();
            const std::uint32_t pixel = m_candidate[worst];
            made.clear();
            // The pixel lies in the closure of its triangle: the search starts there.
            if (m_triangulation.Insert(Site(m_raster, pixel), pixel, &made, worst) ==
                C2Triangulation::kNone) {
                throw std::logic_error("greedy insertion: a pixel was refused");
            }
            // A triangle rewritten more than once is listed each time.
            std::sort(made.begin(), made.end());
            made.erase(std::unique(made.begin(), made.end()), made.end());
            for (std::uint32_t t : made) {
                Rescan(t);
            }
        }
    }

    /// The largest error of any triangle, in raster units: the triangles whose rounded error
    /// is the largest are scanned again for the exact value.
    double LargestError() const {
        const float largest = *std::max_element(m_error.begin(), m_error.end());
        double exact = 0.0;
        for (std::uint32_t t = 0; t < m_error.size(); ++t) {
            if (m_error[t] == largest) {
                exact = std::max(exact, Scan(t).error);
            }
        }
        return exact;
    }

    C2Triangulation& Triangulation() { return m_triangulation; }

private:
    Candidate Scan(std::uint32_t t) const {
        const std::array<std::uint32_t, 3> v = m_triangulation.GetTriangle(t);
        return ScanTriangle(m_raster,
                            {m_triangulation.GetSample(v[0]), m_triangulation.GetSample(v[1]),
                             m_triangulation.GetSample(v[2])});
    }

    /// Brings triangle t's worst pixel and its place in the queue up to date.
    void Rescan(std::uint32_t t) {
        if (t >= m_error.size()) {
            m_error.resize(t + std::size_t{1}, kOutside);
            m_candidate.resize(t + std::size_t{1});
        }
        const bool counted = m_error[t] != kOutside;
        if (m_triangulation.HasCorner(t)) {
            m_triangles -= counted;
            m_error[t] = kOutside;
            m_queue.Remove(t);
            return;
        }
        m_triangles += !counted;
        const Candidate worst = Scan(t);
        m_error[t] = static_cast<float>(worst.error);
        m_candidate[t] = worst.pixel;
        if (worst.error > m_threshold) {
            m_queue.Set(t, m_error[t]);
        } else {
            m_queue.Remove(t);
        }
    }

    /// The error of a triangle with a corner of the enclosing triangle, outside the raster.
    static constexpr float kOutside = -1.0f;

    const Raster& m_raster;
    MeshLimits m_limits;
    double m_threshold;
    C2Triangulation m_triangulation;
    /// Per triangle: the error of its worst pixel (rounded), and that pixel.
    std::vector<float> m_error;
    std::vector<std::uint32_t> m_candidate;
    CandidateQueue m_queue;
    /// Triangles without a corner.
    std::size_t m_triangles = 0;
};

/// The raster with a one-pixel side doubled: [a b c] becomes [a b c; a b c].
Raster Widened(const Raster& raster) {
    Raster wide;
    wide.maximum = raster.maximum;
    wide.width = std::max<std::size_t>(raster.width, 2);
    wide.height = std::max<std::size_t>(raster.height, 2);
    wide.pixels.resize(wide.width * wide.height);
    for (std::size_t y = 0; y < wide.height; ++y) {
        for (std::size_t x = 0; x < wide.width; ++x) {
            wide.pixels[y * wide.width + x] =
                raster.At(std::min(x, raster.width - 1), std::min(y, raster.height - 1));
        }
    }
    return wide;
}

/// How far along the raster's border, clockwise from the top left corner, the point (x, z)
/// on it lies.
double BorderPosition(const SFVec3f& p, const Raster& raster) {
    const double right = static_cast<double>(raster.width - 1);
    const double bottom = static_cast<double>(raster.height - 1);
    if (p.z == 0.0f) {
        return p.x;
    }
    if (p.x == right) {
        return right + p.z;
    }
    if (p.z == bottom) {
        return 2 * right + bottom - p.x;
    }
    return 2 * (right + bottom) - p.z;
}

/// The vertices on the raster's border, in order around it.
std::vector<std::uint32_t> Outline(const Mesh& mesh, const Raster& raster) {
    const float right = static_cast<float>(raster.width - 1);
    const float bottom = static_cast<float>(raster.height - 1);
    std::vector<std::pair<double, std::uint32_t>> border;
    for (std::uint32_t v = 0; v < mesh.vertices.size(); ++v) {
        const SFVec3f& p = mesh.vertices[v];
        if (p.x == 0.0f || p.z == 0.0f || p.x == right || p.z == bottom) {
            border.emplace_back(BorderPosition(p, raster), v);
        }
    }
    std::sort(border.begin(), border.end());
    std::vector<std::uint32_t> outline;
    for (const auto& b : border) {
        outline.push_back(b.second);
    }
    return outline;
}

/// The triangles without a corner, as vertex numbers without the corners, turned to face +y.
std::vector<Triangle> FacingUp(const C2Triangulation& triangulation) {
    std::vector<Triangle> triangles;
    triangles.reserve(2 * triangulation.GetKept());
    for (std::uint32_t t = 0; t < triangulation.GetTriangleCount(); ++t) {
        if (!triangulation.HasCorner(t)) {
            const std::array<std::uint32_t, 3> v = triangulation.GetTriangle(t);
            // Counter-clockwise in (x, z) is clockwise seen from +y.
            triangles.push_back({v[0] - kCorners, v[2] - kCorners, v[1] - kCorners});
        }
    }
    return triangles;
}

/// The vertices of the pixels, with their values as heights.
std::vector<SFVec3f> Vertices(const std::vector<std::uint32_t>& pixels, const Raster& raster) {
    std::vector<SFVec3f> vertices;
    vertices.reserve(pixels.size());
    for (std::uint32_t pixel : pixels) {
        const SFVec3f site = Site(raster, pixel);
        vertices.emplace_back(site.x, raster.pixels[pixel], site.z);
    }
    return vertices;
}

/// The largest distance of the pixels of a strip (raster one pixel high or wide) from its
/// mesh: along the strip's own side of the widened raster the mesh is the line through the
/// vertices there, in order, and the copied pixels beside it do not count.
double StripError(const Mesh& mesh, const Raster& strip) {
    const bool alongX = strip.height == 1;
    std::vector<std::pair<double, double>> line; // position along the strip, height
    for (const SFVec3f& v : mesh.vertices) {
        if ((alongX ? v.z : v.x) == 0.0) {
            line.emplace_back(alongX ? v.x : v.z, v.y);
        }
    }
    std::sort(line.begin(), line.end());
    double largest = 0.0;
    std::size_t segment = 0;
    for (std::size_t i = 0; i < strip.pixels.size(); ++i) {
        const double at = static_cast<double>(i);
        while (segment + 2 < line.size() && line[segment + 1].first <= at) {
            ++segment;
        }
        const auto& [x0, y0] = line[segment];
        const auto& [x1, y1] = line[segment + 1];
        const double height = y0 + (y1 - y0) * (at - x0) / (x1 - x0);
        largest = std::max(largest, std::fabs(height - strip.pixels[i]));
    }
    return largest;
}

} // namespace

HeightmapMesh MeshHeightmap(const Raster& raster, const MeshLimits& limits) {
    const bool strip = raster.width < 2 || raster.height < 2;
    const Raster wide = strip ? Widened(raster) : Raster();
    const Raster& map = strip ? wide : raster;
    HeightmapMesh result;
    std::vector<std::uint32_t> pixels;
    {
        // The queue's arrays go before the mesh is made, the triangulation before its
        // vertices are: the largest of these never share the memory.
        C2Triangulation triangulation = [&] {
            GreedyInsertion insertion(map, limits);
            insertion.Run();
            result.largestError = insertion.LargestError() / map.maximum;
            return std::move(insertion.Triangulation());
        }();
        result.mesh.triangles = FacingUp(triangulation);
        pixels.assign(triangulation.GetSamples() + kCorners,
                      triangulation.GetSamples() + triangulation.GetVertexCount());
    }
    result.mesh.vertices = Vertices(pixels, map);
    result.outline = Outline(result.mesh, map);
    if (strip && raster.pixels.size() > 1) {
        result.largestError = StripError(result.mesh, raster) / map.maximum;
    }
    return result;
}

} // namespace zq::tool
