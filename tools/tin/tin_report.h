// tin_report.h: what `zqmath tin` prints on standard output.
#ifndef ZQMATH_TOOLS_TIN_TIN_REPORT_H
#define ZQMATH_TOOLS_TIN_TIN_REPORT_H

#include <sfvec3f.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace zq::tool {

/// The extent of the samples in the input's axes and the statistics of their heights.
struct SampleSummary {
    std::size_t count = 0;
    double min[3] = {0.0, 0.0, 0.0};
    double max[3] = {0.0, 0.0, 0.0};
    /// The middle height, or the mean of the two middle ones.
    double median = 0.0;
    double mean = 0.0;
    /// Sums over the samples of the height's deviation from the mean: |d|, d^2, d^3, d^4.
    double deviation[4] = {0.0, 0.0, 0.0, 0.0};
};

/// The summary of samples (at least one) in the input's axes, the height being axis up (1 or 2).
SampleSummary Summarize(const std::vector<SFVec3f>& samples, int up);

/// The counts, results and times of one run.
struct TinFacts {
    std::string input;
    std::string format;
    int up = 2;
    std::size_t kept = 0;
    std::size_t duplicates = 0;
    std::size_t rejected = 0;
    std::size_t triangles = 0;
    double planArea = 0.0;
    double readSeconds = 0.0;
    double triangulationSeconds = 0.0;
    double writeSeconds = 0.0;
    double totalSeconds = 0.0;
    std::vector<std::string> written;
};

/// One labelled line per count, extent, height statistic and time.
void PrintTinReport(std::FILE* out, const TinFacts& facts, const SampleSummary& summary);

} // namespace zq::tool

#endif
