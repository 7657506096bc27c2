// CMathDLL: the library object and its release signature.
#include "mathdll.h"

#include "mmmstd.h"
#include "stamp.h"

#include <cstdlib>
#include <ctime>

CMathDLL* CMathDLL::sfMathDLL = nullptr;

CMathDLL::CMathDLL(HINSTANCE instance) : CBaseDLL(instance), m_tolerance(1e-5) {
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    sfMathDLL = this;
}

CMathDLL::CMathDLL(const CMathDLL& other) : CBaseDLL(other), m_tolerance(other.m_tolerance) {}

CMathDLL& CMathDLL::operator=(const CMathDLL& other) {
    CBaseDLL::operator=(other);
    m_tolerance = other.m_tolerance;
    return *this;
}

CMathDLL::~CMathDLL() {
    sfMathDLL = nullptr;
}

CMathDLL* CMathDLL::OnlyInstance() {
    return sfMathDLL;
}

char* CMathDLL::Signature() const {
    static char buffer[zq::detail::kStampSize];
    zq::detail::FormatStamp(buffer);
    return buffer;
}
