// swap_count.h: the constructor's swaps, counted for the benchmarks. Not installed.
#ifndef ZQMATH_SWAP_COUNT_H
#define ZQMATH_SWAP_COUNT_H

#include "zqexport.h"

#include <cstddef>

namespace zq::detail {

/// The swaps made by every C2Subdivision constructor in this process so far.
ZQMATH_API std::size_t ConstructorSwaps();
/// Counts count more.
void CountConstructorSwaps(std::size_t count);

} // namespace zq::detail

#endif
