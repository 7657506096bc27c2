// peak_memory.cpp: getrusage on POSIX systems, the process memory counters on Windows.
#include "peak_memory.h"

#ifdef _WIN32
#include <windows.h>
// psapi.h needs the types of windows.h first.
#include <psapi.h>
#else
#include <sys/resource.h>
#endif

namespace zq::tool {

std::size_t PeakMemory() {
#ifdef _WIN32
    PROCESS_MEMORY_COUNTERS counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) {
        return 0;
    }
    return counters.PeakWorkingSetSize;
#else
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) {
        return 0;
    }
    // Linux counts in kilobytes.
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
#endif
}

} // namespace zq::tool
