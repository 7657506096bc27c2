// prefault.h: fresh memory mapped ahead of its first write. Not installed.
#ifndef ZQMATH_PREFAULT_H
#define ZQMATH_PREFAULT_H

#include <cstddef>

namespace zq::detail {

/// Maps the pages of [begin, begin + bytes) for writing now, where the system can do that in
/// one call, so that the first writes do not fault page by page; elsewhere it does nothing.
/// The contents stay as they are.
void Prefault(void* begin, std::size_t bytes);

/// Ranges from this size up are worth large pages.
constexpr std::size_t kLargePageMinimum = std::size_t(4) << 20;

/// Asks the system to back the range with large pages, where it can and the range is
/// kLargePageMinimum or more: one page fault and one translation entry then serve 2 MB instead
/// of 4 KB, and freeing the range costs a fraction. The contents stay as they are.
void AdviseLargePages(void* begin, std::size_t bytes);

} // namespace zq::detail

#endif
