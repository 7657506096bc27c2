// stl_writer.cpp: facets with their normals; the base as walls and a fan under the outline.
#include "stl_writer.h"

#include <cmath>
#include <cstring>

namespace zq::tool {
namespace {

constexpr std::size_t kFacetBytes = 50;

void PutFloat(unsigned char*& at, float f) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &f, sizeof bits);
    for (int i = 0; i < 4; ++i) {
        *at++ = static_cast<unsigned char>(bits >> (8 * i));
    }
}

void PutPoint(unsigned char*& at, const SFVec3f& p) {
    PutFloat(at, static_cast<float>(p.x));
    PutFloat(at, static_cast<float>(p.y));
    PutFloat(at, static_cast<float>(p.z));
}

SFVec3f Cross(const SFVec3f& u, const SFVec3f& v) {
    return SFVec3f(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
}

double Dot(const SFVec3f& u, const SFVec3f& v) {
    return u.x * v.x + u.y * v.y + u.z * v.z;
}

/// Writes the facet a, b, c with the unit normal of its winding (zero when it has no area).
void PutFacet(std::FILE* out, const SFVec3f& a, const SFVec3f& b, const SFVec3f& c) {
    SFVec3f n = Cross(b - a, c - a);
    const double length = std::sqrt(Dot(n, n));
    n = length > 0.0 ? SFVec3f(n.x / length, n.y / length, n.z / length) : SFVec3f(0, 0, 0);
    unsigned char record[kFacetBytes] = {};
    unsigned char* at = record;
    PutPoint(at, n);
    PutPoint(at, a);
    PutPoint(at, b);
    PutPoint(at, c);
    std::fwrite(record, 1, kFacetBytes, out);
}

/// Writes the facet a, b, c wound so that its normal does not point against facing.
void PutFacing(std::FILE* out, const SFVec3f& a, const SFVec3f& b, const SFVec3f& c,
               const SFVec3f& facing) {
    if (Dot(Cross(b - a, c - a), facing) < 0.0) {
        PutFacet(out, a, c, b);
    } else {
        PutFacet(out, a, b, c);
    }
}

/// Two facets a wall for each side of the outline and one floor facet, all facing out.
void PutBase(std::FILE* out, const Mesh& mesh, const SolidBase& base) {
    SFVec3f centre(0, 0, 0);
    for (std::uint32_t v : base.outline) {
        centre = centre + mesh.vertices[v];
    }
    const float count = static_cast<float>(base.outline.size());
    centre = SFVec3f(centre.x / count, base.bottom, centre.z / count);
    for (std::size_t i = 0; i < base.outline.size(); ++i) {
        const SFVec3f& a = mesh.vertices[base.outline[i]];
        const SFVec3f& b = mesh.vertices[base.outline[(i + 1) % base.outline.size()]];
        const SFVec3f a0(a.x, base.bottom, a.z);
        const SFVec3f b0(b.x, base.bottom, b.z);
        const SFVec3f outwards((a.x + b.x) / 2 - centre.x, 0, (a.z + b.z) / 2 - centre.z);
        PutFacing(out, a, a0, b0, outwards);
        PutFacing(out, a, b0, b, outwards);
        PutFacing(out, centre, a0, b0, SFVec3f(0, -1, 0));
    }
}

} // namespace

void WriteStl(std::FILE* out, const Mesh& mesh, const SolidBase* base) {
    unsigned char header[84] = {};
    std::snprintf(reinterpret_cast<char*>(header), 80, "binary STL written by zqmath mesh");
    const std::size_t facets =
        mesh.triangles.size() + (base != nullptr ? 3 * base->outline.size() : 0);
    for (int i = 0; i < 4; ++i) {
        header[80 + i] = static_cast<unsigned char>(static_cast<std::uint32_t>(facets) >> (8 * i));
    }
    std::fwrite(header, 1, sizeof header, out);
    for (const Triangle& t : mesh.triangles) {
        PutFacet(out, mesh.vertices[t[0]], mesh.vertices[t[1]], mesh.vertices[t[2]]);
    }
    if (base != nullptr) {
        PutBase(out, mesh, *base);
    }
}

} // namespace zq::tool
