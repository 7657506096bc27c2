// C2Triangulation: the flat Delaunay triangulation, built at once or a sample at a time.
#include "c2triangulation.h"

#include "delaunay/flat_build.h"
#include "delaunay/uninitialized.h"

#include <utility>

using zq::detail::FlatTriangulation;

namespace {

/// The sample number of a corner vertex.
constexpr std::uint32_t kCorner = C2Triangulation::kNone;

} // namespace

C2Triangulation::C2Triangulation(const SFVec3f* samples, std::size_t count,
                                 const C2TriangulationOptions& options) {
    zq::detail::FlatBuild b = zq::detail::BuildFlat(samples, count, options, nullptr);
    m_flat = std::move(b.flat);
    zq::detail::ReserveLarge(m_samples, 3 + b.order.size());
    m_samples.assign(3, kCorner);
    for (std::uint32_t k : b.order) {
        m_samples.push_back(b.kept[k]);
    }
    m_kept = b.kept.size();
    m_duplicates = b.duplicates;
    m_rejected = b.rejected;
}

C2Triangulation::C2Triangulation(const std::vector<SFVec3f>& samples,
                                 const C2TriangulationOptions& options)
    : C2Triangulation(samples.data(), samples.size(), options) {}

C2Triangulation::C2Triangulation(const std::array<SFVec3f, 3>& corners)
    : C2Triangulation(nullptr, 0, C2TriangulationOptions{corners, {}, 1}) {}

C2Triangulation::C2Triangulation(const C2Triangulation& t)
    : m_flat(std::make_unique<FlatTriangulation>(*t.m_flat)), m_samples(t.m_samples),
      m_kept(t.m_kept), m_duplicates(t.m_duplicates), m_rejected(t.m_rejected) {}

C2Triangulation::C2Triangulation(C2Triangulation&& t) noexcept = default;

C2Triangulation::~C2Triangulation() = default;

C2Triangulation& C2Triangulation::operator=(const C2Triangulation& t) {
    if (this != &t) {
        *this = C2Triangulation(t);
    }
    return *this;
}

C2Triangulation& C2Triangulation::operator=(C2Triangulation&& t) noexcept = default;

void C2Triangulation::Reserve(std::size_t count) {
    m_flat->Reserve(count);
    zq::detail::ReserveLarge(m_samples, m_samples.size() + count);
}

std::uint32_t C2Triangulation::Insert(const SFVec3f& p, std::uint32_t sample,
                                      std::vector<std::uint32_t>* made, std::uint32_t from) {
    const zq::detail::Corners corners = {SFVec3f(GetSite(0).x, 0.0, GetSite(0).y),
                                         SFVec3f(GetSite(1).x, 0.0, GetSite(1).y),
                                         SFVec3f(GetSite(2).x, 0.0, GetSite(2).y)};
    if (!zq::detail::Usable(p) || !zq::detail::StrictlyInside(corners, p) ||
        m_kept >= (std::size_t(1) << 28)) {
        ++m_rejected;
        return kNone;
    }
    const std::uint32_t v =
        m_flat->InsertUnlessNear(zq::detail::SiteOf(p), zq::detail::kSameSiteDistance,
                                 from < GetTriangleCount() ? 3 * from : kNone);
    if (v == kNone) {
        ++m_duplicates;
        return kNone;
    }
    m_samples.push_back(sample);
    ++m_kept;
    if (made != nullptr) {
        m_flat->TrianglesAroundNewest(*made);
    }
    return v;
}

std::size_t C2Triangulation::GetVertexCount() const {
    return m_flat->VertexCount();
}

SFVec2f C2Triangulation::GetSite(std::uint32_t v) const {
    const zq::detail::Site& s = m_flat->Vertex(v);
    return SFVec2f(s.x, s.y);
}

std::size_t C2Triangulation::GetTriangleCount() const {
    return m_flat->HalfEdgeCount() / 3;
}

std::array<std::uint32_t, 3> C2Triangulation::GetTriangle(std::uint32_t t) const {
    const std::uint32_t* o = m_flat->Origins() + 3 * std::size_t(t);
    return {o[0], o[1], o[2]};
}

std::uint32_t C2Triangulation::GetNeighbour(std::uint32_t t, int k) const {
    const std::uint32_t twin = m_flat->Twin(3 * std::size_t(t) + static_cast<std::size_t>(k));
    return twin == FlatTriangulation::kNone ? FlatTriangulation::kNone : twin / 3;
}

bool C2Triangulation::HasCorner(std::uint32_t t) const {
    const std::uint32_t* o = m_flat->Origins() + 3 * std::size_t(t);
    return o[0] < 3 || o[1] < 3 || o[2] < 3;
}

const std::uint32_t* C2Triangulation::GetOrigins() const {
    return m_flat->Origins();
}

const std::uint32_t* C2Triangulation::GetTwins() const {
    return m_flat->Twins();
}

std::vector<std::array<std::uint32_t, 3>> C2Triangulation::GetSampleTriangles() const {
    std::vector<std::array<std::uint32_t, 3>> triangles;
    for (std::uint32_t t = 0; t < GetTriangleCount(); ++t) {
        if (!HasCorner(t)) {
            const std::array<std::uint32_t, 3> v = GetTriangle(t);
            triangles.push_back({m_samples[v[0]], m_samples[v[1]], m_samples[v[2]]});
        }
    }
    return triangles;
}

std::vector<std::uint32_t> C2Triangulation::GetHull() const {
    // A side of the outline: a half-edge of a triangle without a corner whose twin's triangle
    // has one (the enclosing sides, without twins, all have corners).
    const std::size_t halfEdges = m_flat->HalfEdgeCount();
    const auto onOutline = [this](std::size_t h) {
        return !HasCorner(static_cast<std::uint32_t>(h / 3)) && HasCorner(m_flat->Twin(h) / 3);
    };
    std::size_t sides = 0, first = halfEdges;
    for (std::size_t h = 0; h < halfEdges; ++h) {
        if (onOutline(h)) {
            ++sides;
            first = first == halfEdges ? h : first;
        }
    }
    std::vector<std::uint32_t> hull;
    if (sides == 0) {
        return hull;
    }
    std::size_t h = first;
    do {
        hull.push_back(m_flat->Origin(h));
        // Turns about h's end, through triangles without a corner, to the next side.
        std::size_t g = FlatTriangulation::Next(h);
        while (!onOutline(g)) {
            g = FlatTriangulation::Next(m_flat->Twin(g));
        }
        h = g;
    } while (h != first && hull.size() <= sides);
    if (hull.size() != sides) {
        hull.clear();
    }
    return hull;
}
