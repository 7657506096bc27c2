// call_floor.h: a function that does nothing, in a shared library of its own, so that a
// benchmark can time the call into a shared library by itself.
#ifndef ZQMATH_BENCH_CALL_FLOOR_H
#define ZQMATH_BENCH_CALL_FLOOR_H

#include "sfvec3f.h"

namespace bench {

/// Returns p: the least a per-element member called across a shared library can cost.
SFVec3f Unchanged(const SFVec3f& p);

} // namespace bench

#endif
