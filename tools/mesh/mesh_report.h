// mesh_report.h: what `zqmath mesh` prints on standard output.
#ifndef ZQMATH_TOOLS_MESH_MESH_REPORT_H
#define ZQMATH_TOOLS_MESH_MESH_REPORT_H

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace zq::tool {

/// The counts, error, times and memory of one run.
struct MeshFacts {
    std::string input;
    std::size_t width = 0;
    std::size_t height = 0;
    unsigned maximum = 0;
    double errorLimit = 0.0;
    std::size_t vertices = 0;
    std::size_t triangles = 0;
    /// A fraction of the full range.
    double largestError = 0.0;
    double readSeconds = 0.0;
    double meshSeconds = 0.0;
    double totalSeconds = 0.0;
    std::size_t peakBytes = 0;
    std::vector<std::string> written;
};

/// One labelled line per fact.
void PrintMeshReport(std::FILE* out, const MeshFacts& facts);

} // namespace zq::tool

#endif
