// prefault.h: fresh memory mapped ahead of its first write. Not installed.
#ifndef ZQMATH_PREFAULT_H
#define ZQMATH_PREFAULT_H

#include <cstddef>

namespace zq::detail {

/// Maps the pages of [begin, begin + bytes) for writing now, where the system can do that in
/// one call, so that the first writes do not fault page by page; elsewhere it does nothing.
/// The contents stay as they are.
void Prefault(void* begin, std::size_t bytes);

} // namespace zq::detail

#endif
