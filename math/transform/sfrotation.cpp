// SFRotation: an axis and an angle.
#include "cquat.h"

#include "transform/rotation_detail.h"

SFRotation::SFRotation() : SFRotation(0.0, 1.0, 0.0, 0.0) {}

SFRotation::SFRotation(double axisX, double axisY, double axisZ, double angle)
    : m_axisX(axisX), m_axisY(axisY), m_axisZ(axisZ), m_angle(angle) {}

SFRotation::SFRotation(SFVec3f axis, double angle) : SFRotation(axis.x, axis.y, axis.z, angle) {}

SFRotation::SFRotation(SFRotation const& r) = default;

SFRotation& SFRotation::operator=(SFRotation const& r) = default;

double SFRotation::X() const {
    return m_axisX;
}

double SFRotation::Y() const {
    return m_axisY;
}

double SFRotation::Z() const {
    return m_axisZ;
}

double SFRotation::Angle() const {
    return m_angle;
}

void SFRotation::Angle(double angle) {
    m_angle = angle;
}

// The axis setters are empty on purpose: callers rely on the axis staying as constructed.
void SFRotation::X(double) const {}

void SFRotation::Y(double) const {}

void SFRotation::Z(double) const {}

SFMatrix SFRotation::Transform() const {
    return zq::detail::RuleRotation(SFVec3f(m_axisX, m_axisY, m_axisZ), m_angle);
}

SFRotation::operator SFMatrix() const {
    return Transform();
}
