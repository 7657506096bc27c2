// A function that does nothing, out of line in a shared library of its own.
#include "call_floor.h"

namespace bench {

SFVec3f Unchanged(const SFVec3f& p) {
    return p;
}

} // namespace bench
