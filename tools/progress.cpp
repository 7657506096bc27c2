// progress.cpp: a percentage rewritten in place, silent for the first second.
#include "progress.h"

#include <chrono>
#include <cstdio>

namespace zq::tool {
namespace {

/// Phases shorter than this show nothing.
constexpr std::chrono::seconds kQuiet(1);

} // namespace

ProgressHook ProgressLine(const std::string& phase, bool shown) {
    if (!shown) {
        return {};
    }
    using Clock = std::chrono::steady_clock;
    return [phase, start = Clock::now(), last = -1](std::size_t done, std::size_t total) mutable {
        const bool finished = done >= total;
        if (total == 0 || (last < 0 && (finished || Clock::now() - start < kQuiet))) {
            return;
        }
        const int percent =
            static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total));
        if (percent == last) {
            return;
        }
        last = percent;
        std::fprintf(stderr, "\rzqmath: %s: %3d%%", phase.c_str(), percent);
        if (finished) {
            std::fputc('\n', stderr);
        }
        std::fflush(stderr);
    };
}

} // namespace zq::tool
