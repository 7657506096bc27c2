// large_pages.cpp: the advice for large pages, on Linux.
#include "large_pages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zq::tool {

void AdviseLargePages([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t kLarge = std::uintptr_t(1) << 21;
    const auto at = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (at + kLarge - 1) & ~(kLarge - 1);
    const std::uintptr_t end = (at + bytes) & ~(kLarge - 1);
    if (first < end) {
        madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
    }
#endif
}

} // namespace zq::tool
