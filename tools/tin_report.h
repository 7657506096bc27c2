// tin_report.h: what `zqmath tin` prints on standard output.
#ifndef ZQMATH_TOOLS_TIN_REPORT_H
#define ZQMATH_TOOLS_TIN_REPORT_H

#include <sfvec3f.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace zq::tool {

/// The counts and times of one run.
struct TinFacts {
    std::string input;
    std::size_t inserted = 0;
    std::size_t duplicates = 0;
    std::size_t rejected = 0;
    std::size_t triangles = 0;
    double triangulationSeconds = 0.0;
    double totalSeconds = 0.0;
    std::vector<std::string> written;
};

/// One labelled line per count and time, then the statistics of the samples' heights.
void PrintTinReport(std::FILE* out, const TinFacts& facts, const std::vector<SFVec3f>& samples);

} // namespace zq::tool

#endif
