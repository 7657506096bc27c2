// The symmetric mesh vector: a profile copied from an asymmetric one.
#include "meshvector.h"

#include "curve/meshlist.h"

CSymMeshVector::CSymMeshVector(unsigned int n) : m_points(zq::detail::NewPointList(n)) {}

CSymMeshVector::CSymMeshVector(const CAsymMeshVector& source) {
    const std::vector<SFVec3f>* points = source.GetPoints();
    m_points = points != nullptr ? std::make_shared<std::vector<SFVec3f>>(*points)
                                 : zq::detail::NewPointList(0);
}

int CSymMeshVector::operator==(const CSymMeshVector& other) const {
    // Identity, not contents: two handles on equal lists are different profiles to callers.
    return this == &other ? 1 : 0;
}

std::vector<SFVec3f>* CSymMeshVector::GetPoints() const {
    return m_points.get();
}
