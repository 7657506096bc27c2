// C2QuadEdge: the record of four directed edges.
#include "quadedge.h"

#include "c2subdivision.h"
#include "zqexception.h"

namespace {

/// The error record of an edge index outside 0..3.
constexpr int kIllegalQuadEdgeIndex = 4;

/// Records are never copied; the copy operations keep reporting it.
CZqException NotImplemented() {
    return CZqException("Not yet implemented", CZqException::kInternalError, CZqException::kFatal);
}

} // namespace

C2QuadEdge::C2QuadEdge() : m_timeStamp(0), m_place(0) {
    for (int i = 0; i < 4; ++i) {
        m_edges[i].m_index = i;
    }
    m_edges[0].m_next = &m_edges[0];
    m_edges[1].m_next = &m_edges[3];
    m_edges[2].m_next = &m_edges[2];
    m_edges[3].m_next = &m_edges[1];
}

C2QuadEdge::C2QuadEdge(const C2QuadEdge&) : m_timeStamp(0), m_place(0) {
    throw NotImplemented();
}

C2QuadEdge& C2QuadEdge::operator=(const C2QuadEdge&) {
    throw NotImplemented();
}

bool C2QuadEdge::operator==(const C2QuadEdge& q) const {
    return this == &q;
}

C2Edge& C2QuadEdge::operator[](short i) {
    if (i < 0 || i > 3) {
        throw CZqMathException(kIllegalQuadEdgeIndex, nullptr);
    }
    return m_edges[i];
}

void C2QuadEdge::ClearUsed() {
    for (C2Edge& e : m_edges) {
        e.ClearRef();
    }
}

int C2QuadEdge::TimeStamp(DWORD stamp) {
    if (m_timeStamp == stamp) {
        return 0;
    }
    m_timeStamp = stamp;
    return 1;
}

C2Edge* C2QuadEdge::MakeEdge(C2Subdivision* s, C2Subdivision** slot) {
    if (s != nullptr && slot != nullptr) {
        *slot = s;
    }
    C2Subdivision* owner = slot != nullptr ? *slot : s;
    C2QuadEdge* q = owner != nullptr ? owner->NewRecord() : new C2QuadEdge();
    return &q->m_edges[0];
}
