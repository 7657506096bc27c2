// two_halves.h: a loop split over this thread and one more. Not installed.
#ifndef ZQMATH_TWO_HALVES_H
#define ZQMATH_TWO_HALVES_H

#include <cstddef>
#include <future>

namespace zq::detail {

/// Loops shorter than this stay on one thread: starting another costs more than it saves.
constexpr std::size_t kSmallestSplitLoop = std::size_t(1) << 15;

/// Where InTwoHalves ends the lower half of a loop over [0, count).
constexpr std::size_t LowerHalfEnd(std::size_t count) {
    return count < kSmallestSplitLoop ? count : count / 2;
}

/// Runs work(begin, end) over [0, count): when split, in two halves split at
/// LowerHalfEnd(count), the upper one on a second thread when a thread can be started, else
/// here. The halves must not write the same memory.
template <class Work>
void InTwoHalves(std::size_t count, bool split, const Work& work) {
    const std::size_t half = LowerHalfEnd(count);
    if (!split || half == count) {
        work(std::size_t(0), count);
        return;
    }
    auto upper = std::async(std::launch::async | std::launch::deferred,
                            [&work, half, count] { work(half, count); });
    work(std::size_t(0), half);
    upper.get();
}

} // namespace zq::detail

#endif
