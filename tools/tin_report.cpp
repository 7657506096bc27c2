// tin_report.cpp: the labelled counts and the height statistics of CStatisticsPak.
#include "tin_report.h"

#include "tin_triangulate.h"

#include <statisticspak.h>

namespace zq::tool {
namespace {

void Line(std::FILE* out, const char* label, const std::string& value) {
    std::fprintf(out, "%-26s %s\n", label, value.c_str());
}

void Line(std::FILE* out, const char* label, std::size_t value) {
    Line(out, label, std::to_string(value));
}

void Line(std::FILE* out, const char* label, double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    Line(out, label, std::string(text));
}

std::string Seconds(double s) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f s", s);
    return text;
}

} // namespace

void PrintTinReport(std::FILE* out, const TinFacts& facts, const std::vector<SFVec3f>& samples) {
    std::vector<double> heights;
    heights.reserve(samples.size());
    for (const SFVec3f& p : samples) {
        heights.push_back(p.y);
    }
    const C3RRegion box = Bounds(samples);
    CStatisticsPak stats;
    stats.LoadData(heights.data(), static_cast<int>(heights.size()));
    stats.Calculate();
    stats.CalculateMedian();

    Line(out, "input", facts.input);
    Line(out, "samples read", samples.size());
    Line(out, "vertices inserted", facts.inserted);
    Line(out, "samples dropped",
         std::to_string(facts.duplicates + facts.rejected) + " (" +
             std::to_string(facts.duplicates) + " duplicates, " + std::to_string(facts.rejected) +
             " out of range)");
    Line(out, "triangles", facts.triangles);
    Line(out, "triangulation time", Seconds(facts.triangulationSeconds));
    Line(out, "total time", Seconds(facts.totalSeconds));
    Line(out, "height minimum", box.GetMinPoint().y);
    Line(out, "height median", stats.GetMedian());
    Line(out, "height maximum", box.GetMaxPoint().y);
    Line(out, "height mean", stats.GetMean());
    Line(out, "height average deviation", stats.GetAverageDeviation());
    Line(out, "height standard deviation", stats.GetStandardDeviation());
    Line(out, "height variance", stats.GetVariance());
    Line(out, "height skewness", stats.GetSkewness());
    Line(out, "height kurtosis (excess)", stats.GetKurtosis());
    for (const std::string& path : facts.written) {
        Line(out, "wrote", path);
    }
}

} // namespace zq::tool
