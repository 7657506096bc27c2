// C2Rect: the rectangle of three definitions.
#include "c2rect.h"

#include <algorithm>

namespace {

/// Below this distance two corner points are the same.
constexpr double kEqualDistance = 1e-5;

} // namespace

C2Rect::C2Rect() : m_definition(kTopLeftBottomRight) {}

C2Rect::C2Rect(SFVec2f& a, SFVec2f& b, C2Rect::K2RectDefinition k)
    : m_a(a), m_b(b), m_definition(k) {}

C2Rect::C2Rect(double ax, double ay, double bx, double by, C2Rect::K2RectDefinition k)
    : m_a(ax, ay), m_b(bx, by), m_definition(k) {}

C2Rect::C2Rect(CRect r)
    : m_a(r.left, r.top), m_b(r.right, r.bottom), m_definition(kTopLeftBottomRight) {}

C2Rect::C2Rect(const C2Rect& r) : m_a(r.m_a), m_b(r.m_b), m_definition(r.m_definition) {}

void C2Rect::operator=(const C2Rect& r) {
    m_a = r.m_a;
    m_b = r.m_b;
    m_definition = r.m_definition;
}

SFVec2f C2Rect::GetTopLeft() const {
    switch (m_definition) {
    case kTopLeftBottomRight:
    case kTopLeftSize:
        return m_a;
    case kCenterSize:
        return m_a - m_b * 0.5;
    }
    return SFVec2f();
}

SFVec2f C2Rect::GetBottomRight() const {
    switch (m_definition) {
    case kTopLeftBottomRight:
        return m_b;
    case kTopLeftSize:
        return m_a + m_b;
    case kCenterSize:
        return m_a + m_b * 0.5;
    }
    return SFVec2f();
}

SFVec2f C2Rect::GetCenter() const {
    switch (m_definition) {
    case kTopLeftBottomRight:
        return (m_a + m_b) * 0.5;
    case kTopLeftSize:
        // Half the size, without the corner: callers have always received this.
        return m_b * 0.5;
    case kCenterSize:
        return m_a;
    }
    return SFVec2f();
}

SFVec2f C2Rect::GetSize() const {
    switch (m_definition) {
    case kTopLeftBottomRight:
        return m_b - m_a;
    case kTopLeftSize:
    case kCenterSize:
        return m_b;
    }
    return SFVec2f();
}

double C2Rect::GetWidth() const {
    // Only kind 0 holds a second corner; every other kind, unknown ones too, reads b as a size.
    return m_definition == kTopLeftBottomRight ? m_b.x - m_a.x : m_b.x;
}

double C2Rect::GetHeight() const {
    return m_definition == kTopLeftBottomRight ? m_b.y - m_a.y : m_b.y;
}

bool C2Rect::Contains(const SFVec2f& p) const {
    const SFVec2f tl = GetTopLeft();
    const SFVec2f br = GetBottomRight();
    return tl.x <= p.x && p.x <= br.x && tl.y <= p.y && p.y <= br.y;
}

void C2Rect::Translate(SFVec2f d) {
    m_a += d;
    if (m_definition == kTopLeftBottomRight) {
        m_b += d;
    }
}

bool C2Rect::operator==(C2Rect r) const {
    return m_a.DistanceTo(r.m_a) < kEqualDistance && m_b.DistanceTo(r.m_b) < kEqualDistance &&
           m_definition == r.m_definition;
}

bool C2Rect::operator!=(C2Rect r) const {
    return !(*this == r);
}

void C2Rect::GrowToInclude(const SFVec2f& p) {
    if (Contains(p)) {
        return;
    }
    const SFVec2f tl = GetTopLeft();
    const bool beyondBottomRightOnly = p.x >= tl.x && p.y >= tl.y;
    switch (m_definition) {
    case kTopLeftBottomRight:
        if (beyondBottomRightOnly) {
            m_b = SFVec2f(std::max(m_b.x, p.x), std::max(m_b.y, p.y));
        } else {
            m_a = SFVec2f(std::min(tl.x, p.x), std::min(tl.y, p.y));
        }
        break;
    case kTopLeftSize:
        // Beyond the top or left the corner moves and the size stays: the rectangle moves.
        if (beyondBottomRightOnly) {
            const SFVec2f offset = p - m_a;
            m_b = SFVec2f(std::max(m_b.x, offset.x), std::max(m_b.y, offset.y));
        } else {
            m_a = SFVec2f(std::min(tl.x, p.x), std::min(tl.y, p.y));
        }
        break;
    case kCenterSize:
        // The size becomes the offset of p from the centre, on either side.
        m_b = p - m_a;
        break;
    }
}
