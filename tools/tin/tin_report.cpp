// tin_report.cpp: the tool's own height statistics (a true median, moments about the mean) and
// the labelled lines.
#include "tin_report.h"

#include "large_pages.h"
#include "number_text.h"

#include <algorithm>
#include <cmath>

namespace zq::tool {
namespace {

void Line(std::FILE* out, const char* label, const std::string& value) {
    std::fprintf(out, "%-42s %s\n", label, value.c_str());
}

/// v to six significant digits.
std::string Short(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", v);
    return text;
}

std::string Seconds(double s) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f s", s);
    return text;
}

/// "min .. max (size s)", the bounds exact.
std::string Range(double min, double max) {
    return NumberText(min) + " .. " + NumberText(max) + " (size " + Short(max - min) + ")";
}

/// Coordinate axis of p (0 x, 1 y, 2 z), read in place.
double Coordinate(const SFVec3f& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

/// The middle of values, or the mean of the two middle ones; reorders values.
double Median(std::vector<double>& values) {
    const std::size_t half = values.size() / 2;
    std::nth_element(values.begin(), values.begin() + half, values.end());
    const double upper = values[half];
    if (values.size() % 2 == 1) {
        return upper;
    }
    const double lower = *std::max_element(values.begin(), values.begin() + half);
    return lower + (upper - lower) / 2.0;
}

} // namespace

SampleSummary Summarize(const std::vector<SFVec3f>& samples, int up) {
    SampleSummary s;
    s.count = samples.size();
    std::vector<double> heights;
    ReserveLarge(heights, samples.size());
    double sum = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        s.min[axis] = s.max[axis] = Coordinate(samples.front(), axis);
    }
    for (const SFVec3f& p : samples) {
        for (int axis = 0; axis < 3; ++axis) {
            s.min[axis] = std::min(s.min[axis], Coordinate(p, axis));
            s.max[axis] = std::max(s.max[axis], Coordinate(p, axis));
        }
        heights.push_back(Coordinate(p, up));
        sum += heights.back();
    }
    s.mean = sum / static_cast<double>(samples.size());
    for (const double h : heights) {
        const double d = h - s.mean;
        s.deviation[0] += std::fabs(d);
        s.deviation[1] += d * d;
        s.deviation[2] += d * d * d;
        s.deviation[3] += d * d * d * d;
    }
    s.median = Median(heights);
    return s;
}

void PrintTinReport(std::FILE* out, const TinFacts& facts, const SampleSummary& s) {
    const char* const height = facts.up == 2 ? "z" : "y";
    const double n = static_cast<double>(s.count);
    Line(out, "input", facts.input + " (" + facts.format + ", height " + height + ")");
    Line(out, "samples read", std::to_string(s.count));
    Line(out, "vertices (samples kept)", std::to_string(facts.kept));
    Line(out, "samples dropped",
         std::to_string(facts.duplicates + facts.rejected) + " (" +
             std::to_string(facts.duplicates) + " within 1e-5 in plan of an earlier sample, " +
             std::to_string(facts.rejected) + " with coordinates too large or too small)");
    Line(out, "triangles", std::to_string(facts.triangles));
    Line(out, "plan area of the triangles", Short(facts.planArea));
    Line(out, "extent x", Range(s.min[0], s.max[0]));
    Line(out, "extent y", Range(s.min[1], s.max[1]));
    Line(out, "extent z", Range(s.min[2], s.max[2]));
    Line(out, "height median", NumberText(s.median));
    Line(out, "height mean", Short(s.mean));
    Line(out, "height mean absolute deviation", Short(s.deviation[0] / n));
    Line(out, "height standard deviation (sample, n - 1)",
         Short(s.count > 1 ? std::sqrt(s.deviation[1] / (n - 1.0)) : 0.0));
    // The moment ratios have no value when every height is the same.
    const double m2 = s.deviation[1] / n;
    const bool spread = m2 > 0.0;
    Line(out, "height skewness (moments, g1)",
         spread ? Short(s.deviation[2] / n / std::pow(m2, 1.5)) : "none (all heights equal)");
    Line(out, "height excess kurtosis (moments, g2)",
         spread ? Short(s.deviation[3] / n / (m2 * m2) - 3.0) : "none (all heights equal)");
    Line(out, "read time", Seconds(facts.readSeconds));
    Line(out, "triangulation time", Seconds(facts.triangulationSeconds));
    Line(out, "write time", Seconds(facts.writeSeconds));
    Line(out, "total time", Seconds(facts.totalSeconds));
    for (const std::string& path : facts.written) {
        Line(out, "wrote", path);
    }
}

} // namespace zq::tool
