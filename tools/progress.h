// progress.h: how far a long phase has got, shown on standard error.
#ifndef ZQMATH_TOOLS_PROGRESS_H
#define ZQMATH_TOOLS_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace zq::tool {

/// Told how much of a phase is done, out of how much; a total of 0 shows nothing.
using ProgressHook = std::function<void(std::size_t done, std::size_t total)>;

/// A hook that, once the phase has run for a second, keeps a line "zqmath: PHASE: NN%" up to date
/// on standard error and ends it when done reaches total. Null when shown is false.
ProgressHook ProgressLine(const std::string& phase, bool shown);

/// The clock the commands time their phases with.
using Clock = std::chrono::steady_clock;
/// A duration of that clock in seconds.
inline double Seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

} // namespace zq::tool

#endif
