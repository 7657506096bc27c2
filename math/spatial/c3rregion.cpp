// The axis-aligned box.
#include "c3rregion.h"

#include "c3matrix.h"
#include "sfmatrix.h"

#include <cmath>

namespace {

// Two distinct all-zero boxes. Static storage is zeroed before any initialiser runs, so even
// another file's start-up code reads them as zero.
const C3RRegion g_emptyBox(SFVec3f(0.0, 0.0, 0.0), SFVec3f(0.0, 0.0, 0.0));
const C3RRegion g_zeroBox(SFVec3f(0.0, 0.0, 0.0), SFVec3f(0.0, 0.0, 0.0));

/// A corner point through the affine part of m, divided by the sum of m's last column.
SFVec3f TransformCorner(const SFMatrix& m, const SFVec3f& p) {
    const double x = m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12];
    const double y = m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13];
    const double z = m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14];
    // The plain column sum, not (x, y, z, 1) times the column: boxes have always been
    // transformed this way, and for an affine matrix both give 1.
    const double w = m[3] + m[7] + m[11] + m[15];
    return SFVec3f(x / w, y / w, z / w);
}

#if ZQMATH_INLINE_EXPORTED
// Modules built when ExtendTo was not inline call the library's copies: taking their addresses
// makes this file define them, and the export keeps them visible.
[[gnu::used]] void (C3RRegion::*const g_extendToPoint)(const SFVec3f&) = &C3RRegion::ExtendTo;
[[gnu::used]] void (C3RRegion::*const g_extendToBox)(const C3RRegion&) = &C3RRegion::ExtendTo;
#endif

} // namespace

#if !ZQMATH_INLINE_EXPORTED
void C3RRegion::ExtendTo(const SFVec3f& p) {
    ExtendFaces(p, p);
}

void C3RRegion::ExtendTo(const C3RRegion& r) {
    ExtendFaces(r.m_min, r.m_max);
}
#endif

const C3RRegion& C3RRegion::kEmptyBox = g_emptyBox;
const C3RRegion& C3RRegion::kZeroBox = g_zeroBox;

C3RRegion::C3RRegion() : m_min(SFVec3f::kOne), m_max(SFVec3f::kZero) {}

C3RRegion::C3RRegion(const SFVec3f& a, const SFVec3f& b)
    : m_min(a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y, a.z < b.z ? a.z : b.z),
      m_max(a.x < b.x ? b.x : a.x, a.y < b.y ? b.y : a.y, a.z < b.z ? b.z : a.z) {}

SFVec3f C3RRegion::GetMinPoint() const {
    return m_min;
}

SFVec3f C3RRegion::GetMaxPoint() const {
    return m_max;
}

void C3RRegion::SetMinPoint(const SFVec3f& p) {
    m_min = p;
}

void C3RRegion::SetMaxPoint(const SFVec3f& p) {
    m_max = p;
}

SFVec3f C3RRegion::GetSize() const {
    return m_max - m_min;
}

void C3RRegion::SetSize(const SFVec3f& s) {
    const SFVec3f d = (s - (m_max - m_min)) * 0.5;
    m_min -= d;
    m_max += d;
}

SFVec3f C3RRegion::GetCenter() const {
    return (m_max + m_min) * 0.5;
}

void C3RRegion::SetCenter(const SFVec3f& c) {
    const SFVec3f delta = c - (m_min + m_max) * 0.5;
    m_min += delta;
    m_max += delta;
}

void C3RRegion::SetEmpty() {
    m_min = SFVec3f(0.0, 0.0, 0.0);
}

bool C3RRegion::IsEmpty() const {
    if (m_min.x > m_max.x || m_min.y > m_max.y || m_min.z > m_max.z) {
        return true;
    }
    return m_max.x == m_min.x && m_max.y == m_min.y && m_max.z == m_min.z;
}

void C3RRegion::OrderPoints() {
    for (unsigned long c = 0; c < 3; ++c) {
        if (m_min[c] > m_max[c]) {
            const double low = m_max[c];
            m_max[c] = m_min[c];
            m_min[c] = low;
        }
    }
}

C3RRegion& C3RRegion::operator+=(const C3RRegion& r) {
    if (*this == kEmptyBox) {
        *this = r;
    } else if (!(r == kEmptyBox)) {
        ExtendTo(r);
    }
    return *this;
}

void C3RRegion::IntersectWith(const C3RRegion& /*r*/) const {}

void C3RRegion::Pin(SFVec3f& p) const {
    for (unsigned long c = 0; c < 3; ++c) {
        if (p[c] < m_min[c]) {
            p[c] = m_min[c];
        }
        if (p[c] > m_max[c]) {
            p[c] = m_max[c];
        }
    }
}

void C3RRegion::Offset(const SFVec3f& d) {
    m_min += d;
    m_max += d;
}

void C3RRegion::Inset(const SFVec3f& d) {
    m_min += d;
    m_max -= d;
}

void C3RRegion::GrowByFactor(double f) {
    const SFVec3f g = (m_max - m_min) * f;
    m_min -= g;
    m_max += g;
}

SFVec3f C3RRegion::RescaleInto(const SFVec3f& p) const {
    return (p - m_min) / (m_max - m_min);
}

void C3RRegion::Transform(const SFMatrix& m) {
    m_min = TransformCorner(m, m_min);
    m_max = TransformCorner(m, m_max);
}

void C3RRegion::Transform(const C3Matrix& m) {
    m_min = m * m_min;
    m_max = m * m_max;
}

double C3RRegion::Diameter() const {
    return GetSize().Length();
}

double C3RRegion::Radius() const {
    return 0.5 * Diameter();
}

bool C3RRegion::Contains(const SFVec3f& p) const {
    return m_min.x <= p.x && p.x <= m_max.x && m_min.y <= p.y && p.y <= m_max.y && m_min.z <= p.z &&
           p.z <= m_max.z;
}

bool C3RRegion::Contains(const C3RRegion& r) const {
    return r.m_min.x >= m_min.x && r.m_max.x <= m_max.x && r.m_min.y >= m_min.y &&
           r.m_max.y <= m_max.y && r.m_min.z >= m_min.z && r.m_max.z <= m_max.z;
}

bool C3RRegion::EqualSize(const C3RRegion& r) const {
    const SFVec3f a = GetSize();
    const SFVec3f b = r.GetSize();
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool C3RRegion::operator==(const C3RRegion& r) const {
    return m_min.x == r.m_min.x && m_min.y == r.m_min.y && m_min.z == r.m_min.z &&
           m_max.x == r.m_max.x && m_max.y == r.m_max.y && m_max.z == r.m_max.z;
}

bool C3RRegion::operator!=(const C3RRegion& r) const {
    return !(*this == r);
}

SFVec3f C3RRegion::Corner(int i) const {
    // Truncating remainder: a negative index with a nonzero remainder matches no corner and
    // keeps the minimum's x and y.
    const int k = i % 4;
    const bool maxX = k == 1 || k == 2;
    const bool maxY = k == 2 || k == 3;
    return SFVec3f(maxX ? m_max.x : m_min.x, maxY ? m_max.y : m_min.y, i <= 3 ? m_min.z : m_max.z);
}

bool C3RRegion::NextFace(C3RRegion::ESpatialFace& /*face*/) const {
    return false;
}

C3RRegion::ESpatialFace C3RRegion::ExitFace(const SFVec3f& /*origin*/,
                                            const SFVec3f& /*direction*/) const {
    return kNoFace;
}
