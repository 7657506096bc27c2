// mesh_report.cpp: labelled lines, the error also in the map's own levels.
#include "mesh_report.h"

namespace zq::tool {
namespace {

void Line(std::FILE* out, const char* label, const std::string& value) {
    std::fprintf(out, "%-22s %s\n", label, value.c_str());
}

std::string Format(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

void PrintMeshReport(std::FILE* out, const MeshFacts& facts) {
    Line(out, "input", facts.input);
    Line(out, "pixels",
         std::to_string(facts.width) + " x " + std::to_string(facts.height) + ", values 0 to " +
             std::to_string(facts.maximum));
    Line(out, "error limit", Format("%.6g of the full range", facts.errorLimit));
    Line(out, "vertices", std::to_string(facts.vertices));
    Line(out, "triangles", std::to_string(facts.triangles));
    Line(out, "largest error",
         Format("%.6g of the full range", facts.largestError) +
             Format(" (%.6g levels)", facts.largestError * facts.maximum));
    Line(out, "reading time", Format("%.3f s", facts.readSeconds));
    Line(out, "meshing time", Format("%.3f s", facts.meshSeconds));
    Line(out, "total time", Format("%.3f s", facts.totalSeconds));
    Line(out, "peak memory",
         facts.peakBytes == 0 ? std::string("unknown")
                              : Format("%.1f MB", static_cast<double>(facts.peakBytes) / 1e6));
    for (const std::string& path : facts.written) {
        Line(out, "wrote", path);
    }
}

} // namespace zq::tool
