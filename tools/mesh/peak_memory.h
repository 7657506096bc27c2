// peak_memory.h: the most memory the process has held.
#ifndef ZQMATH_TOOLS_MESH_PEAK_MEMORY_H
#define ZQMATH_TOOLS_MESH_PEAK_MEMORY_H

#include <cstddef>

namespace zq::tool {

/// The process's peak resident set (working set on Windows) in bytes; 0 when unknown.
std::size_t PeakMemory();

} // namespace zq::tool

#endif
