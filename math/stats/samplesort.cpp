// The quick sort of the statistics samples.
#include "stats/samplesort.h"

#include <utility>

namespace zq::detail {

namespace {

/// The middle of a, b and c by CompareSamples; always one of the three values.
double MedianOfThree(double a, double b, double c) {
    if (CompareSamples(a, b) > 0) {
        std::swap(a, b);
    }
    if (CompareSamples(b, c) > 0) {
        b = c;
    }
    return CompareSamples(a, b) > 0 ? a : b;
}

} // namespace

int CompareSamples(double a, double b) {
    if (a < b) {
        return -1;
    }
    if (a > b) {
        return 1;
    }
    return 0;
}

void SortSamples(double* values, std::size_t count) {
    while (count > 1) {
        const double pivot = MedianOfThree(values[0], values[count / 2], values[count - 1]);
        // Three-way partition: [0, below) before the pivot, [below, next) level with it,
        // [above, count) after it. The indices only move towards each other whatever the
        // comparison answers, so an inconsistent one cannot lead outside the array; the pivot
        // is one of the values and level with itself, so every pass removes at least one.
        std::size_t below = 0;
        std::size_t next = 0;
        std::size_t above = count;
        while (next < above) {
            const int order = CompareSamples(values[next], pivot);
            if (order < 0) {
                std::swap(values[below++], values[next++]);
            } else if (order > 0) {
                std::swap(values[next], values[--above]);
            } else {
                ++next;
            }
        }
        // Recurse into the smaller side and loop on the larger: the stack stays logarithmic.
        const std::size_t afterCount = count - above;
        if (below < afterCount) {
            SortSamples(values, below);
            values += above;
            count = afterCount;
        } else {
            SortSamples(values + above, afterCount);
            count = below;
        }
    }
}

} // namespace zq::detail
