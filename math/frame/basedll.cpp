// CBaseDLL: the module handle of a library object.
#include "mathdll.h"

#include "frame_internal.h"

CBaseDLL::CBaseDLL(HINSTANCE instance) : m_hInstance(instance) {
    zq::detail::NoteFirstConstruction();
}

CBaseDLL::CBaseDLL(const CBaseDLL& other) : m_hInstance(other.m_hInstance) {}

CBaseDLL& CBaseDLL::operator=(const CBaseDLL& other) {
    m_hInstance = other.m_hInstance;
    return *this;
}

CBaseDLL::~CBaseDLL() = default;
