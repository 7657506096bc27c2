// large_pages.h: large arrays asked for in 2 MB pages, where the system offers them.
#ifndef ZQMATH_TOOLS_LARGE_PAGES_H
#define ZQMATH_TOOLS_LARGE_PAGES_H

#include <cstddef>
#include <vector>

namespace zq::tool {

/// Asks the system to back the whole 2 MB pages inside the range with large pages: a page
/// fault then maps 2 MB instead of 4 KB, which on a virtual machine is many times faster per
/// byte. Does nothing where the system has no such advice. The contents stay as they are.
void AdviseLargePages(void* begin, std::size_t bytes);

/// Reserves room for n values, in large pages as far as it reaches.
template <class T>
void ReserveLarge(std::vector<T>& values, std::size_t n) {
    values.reserve(n);
    AdviseLargePages(values.data(), values.capacity() * sizeof(T));
}

} // namespace zq::tool

#endif
