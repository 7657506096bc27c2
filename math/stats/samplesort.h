// samplesort.h: the in-place quick sort of the statistics samples. Not installed.
#ifndef ZQMATH_SAMPLESORT_H
#define ZQMATH_SAMPLESORT_H

#include "zqexport.h"

#include <cstddef>

namespace zq::detail {

/// -1 when a < b, 1 when a > b, 0 otherwise: equal or unordered (a NaN on either side).
ZQMATH_API int CompareSamples(double a, double b);

/// Sorts count values ascending in place by CompareSamples, as a quick sort (unstable).
/// NaN makes that comparison inconsistent; the order is then unspecified, but the sort still
/// ends, stays inside the array and keeps every value.
ZQMATH_API void SortSamples(double* values, std::size_t count);

} // namespace zq::detail

#endif
