// C2LineEq: the normalised implicit 2D line.
#include "c2rect.h"

#include <cmath>

// Zeroed rather than left indeterminate, so that copying a default line reads defined values.
C2LineEq::C2LineEq() : m_a(0.0), m_b(0.0), m_c(0.0) {}

C2LineEq::C2LineEq(const SFVec2f& p, const SFVec2f& q) {
    const SFVec2f d = p - q;
    const double length = d.Length();
    m_a = d.y / length;
    m_b = -(d.x / length);
    m_c = -(m_a * q.x + m_b * q.y);
}

double C2LineEq::Eval(const SFVec2f& p) const {
    return m_a * p.x + m_b * p.y + m_c;
}

int C2LineEq::Classify(const SFVec2f& p) const {
    const double v = Eval(p);
    if (v < -HUGE_VAL || std::isnan(v)) {
        return -1;
    }
    if (v > HUGE_VAL) {
        return 1;
    }
    return 0;
}
