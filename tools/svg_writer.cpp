// svg_writer.cpp: the plan view, coloured by height, with its legend.
#include "mesh_writers.h"
#include "tin_triangulate.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace zq::tool {
namespace {

/// A viridis-like ramp from dark violet to yellow: perceptually even, readable in grey and by
/// most colour-blind readers. Evenly spaced stops.
constexpr unsigned char kRamp[][3] = {{0x44, 0x01, 0x54}, {0x48, 0x28, 0x78}, {0x3e, 0x49, 0x89},
                                      {0x31, 0x68, 0x8e}, {0x26, 0x82, 0x8e}, {0x1f, 0x9e, 0x89},
                                      {0x35, 0xb7, 0x79}, {0x6e, 0xce, 0x58}, {0xb5, 0xde, 0x2b},
                                      {0xfd, 0xe7, 0x25}};
constexpr int kStops = sizeof kRamp / sizeof kRamp[0];
/// Triangles are drawn in this many colour bands, one path each, to keep the file small.
constexpr int kBands = 64;
constexpr double kMargin = 20.0;
constexpr double kTop = 48.0;
constexpr double kPlotSize = 720.0;
constexpr double kLegendWidth = 120.0;

/// "#rrggbb" of the ramp at t in [0, 1].
std::string RampColour(double t) {
    const double at = std::clamp(t, 0.0, 1.0) * (kStops - 1);
    const int i = std::min(static_cast<int>(at), kStops - 2);
    const double f = at - i;
    char text[8];
    std::snprintf(
        text, sizeof text, "#%02x%02x%02x",
        static_cast<unsigned>(std::lround(kRamp[i][0] + f * (kRamp[i + 1][0] - kRamp[i][0]))),
        static_cast<unsigned>(std::lround(kRamp[i][1] + f * (kRamp[i + 1][1] - kRamp[i][1]))),
        static_cast<unsigned>(std::lround(kRamp[i][2] + f * (kRamp[i + 1][2] - kRamp[i][2]))));
    return text;
}

/// The extent of the vertices, and the map from x-z to the page.
struct View {
    double minX = 0.0, minZ = 0.0, minY = 0.0, maxY = 0.0;
    double scale = 1.0;
    double width = 0.0, height = 0.0;

    explicit View(const Mesh& mesh) {
        if (mesh.vertices.empty()) {
            return;
        }
        const C3RRegion box = Bounds(mesh.vertices);
        const SFVec3f size = box.GetSize();
        minX = box.GetMinPoint().x;
        minZ = box.GetMinPoint().z;
        minY = box.GetMinPoint().y;
        maxY = box.GetMaxPoint().y;
        const double extent = std::max(size.x, size.z);
        scale = extent > 0.0 ? kPlotSize / extent : 1.0;
        width = size.x * scale;
        height = size.z * scale;
    }
    /// The height as a fraction of the range; the middle for a flat mesh.
    double Level(double y) const { return maxY > minY ? (y - minY) / (maxY - minY) : 0.5; }
    double PageX(double x) const { return kMargin + (x - minX) * scale; }
    double PageY(double z) const { return kTop + (z - minZ) * scale; }
};

/// The triangles as one path per colour band.
void WriteTriangles(std::FILE* out, const Mesh& mesh, const View& view) {
    std::vector<std::vector<std::uint32_t>> bands(kBands);
    for (std::uint32_t i = 0; i < mesh.triangles.size(); ++i) {
        const auto& t = mesh.triangles[i];
        const double mean =
            (mesh.vertices[t[0]].y + mesh.vertices[t[1]].y + mesh.vertices[t[2]].y) / 3.0;
        bands[std::min(static_cast<int>(view.Level(mean) * kBands), kBands - 1)].push_back(i);
    }
    for (int band = 0; band < kBands; ++band) {
        if (bands[band].empty()) {
            continue;
        }
        // A stroke of the fill colour closes the hairline gaps that anti-aliasing leaves.
        const std::string colour = RampColour((band + 0.5) / kBands);
        std::fprintf(out, "<path fill=\"%s\" stroke=\"%s\" d=\"", colour.c_str(), colour.c_str());
        for (std::uint32_t i : bands[band]) {
            const auto& t = mesh.triangles[i];
            for (int k = 0; k < 3; ++k) {
                const SFVec3f& v = mesh.vertices[t[k]];
                std::fprintf(out, "%c%.1f %.1f", k == 0 ? 'M' : 'L', view.PageX(v.x),
                             view.PageY(v.z));
            }
            std::fputc('Z', out);
        }
        std::fputs("\"/>\n", out);
    }
}

/// The colour bar with the highest, middle and lowest height.
void WriteLegend(std::FILE* out, const View& view) {
    const double x = kMargin + view.width + 30.0;
    const double barHeight = std::max(view.height, 160.0);
    std::fputs("<defs><linearGradient id=\"ramp\" x1=\"0\" y1=\"1\" x2=\"0\" y2=\"0\">", out);
    for (int i = 0; i < kStops; ++i) {
        const double t = static_cast<double>(i) / (kStops - 1);
        std::fprintf(out, "<stop offset=\"%.3f\" stop-color=\"%s\"/>", t, RampColour(t).c_str());
    }
    std::fputs("</linearGradient></defs>\n", out);
    std::fprintf(out, "<text x=\"%.1f\" y=\"%.1f\">height</text>\n", x, kTop - 18.0);
    std::fprintf(out,
                 "<rect x=\"%.1f\" y=\"%.1f\" width=\"22\" height=\"%.1f\" fill=\"url(#ramp)\" "
                 "stroke=\"#444\" stroke-width=\"0.5\"/>\n",
                 x, kTop, barHeight);
    const double levels[] = {view.maxY, 0.5 * (view.minY + view.maxY), view.minY};
    for (int i = 0; i < 3; ++i) {
        const double y = kTop + barHeight * i / 2.0;
        std::fprintf(out, "<text x=\"%.1f\" y=\"%.1f\" dominant-baseline=\"middle\">%.4g</text>\n",
                     x + 28.0, y, levels[i]);
    }
}

} // namespace

void WriteSvg(std::FILE* out, const Mesh& mesh) {
    const View view(mesh);
    const double width = kMargin + view.width + 30.0 + kLegendWidth;
    const double height = kTop + std::max(view.height, 160.0) + kMargin + 16.0;
    std::fprintf(out,
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" "
                 "viewBox=\"0 0 %.0f %.0f\" font-family=\"sans-serif\" font-size=\"13\">\n",
                 width, height, width, height);
    std::fprintf(out, "<rect width=\"100%%\" height=\"100%%\" fill=\"white\"/>\n");
    std::fprintf(out,
                 "<text x=\"%.1f\" y=\"24\" font-size=\"15\">zqmath tin: %s vertices, %s "
                 "triangles</text>\n",
                 kMargin, std::to_string(mesh.vertices.size()).c_str(),
                 std::to_string(mesh.triangles.size()).c_str());
    std::fprintf(out, "<g stroke-width=\"0.4\" stroke-linejoin=\"round\">\n");
    WriteTriangles(out, mesh, view);
    std::fputs("</g>\n", out);
    WriteLegend(out, view);
    std::fprintf(out,
                 "<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" fill=\"#555\">plan view from "
                 "above: x to the right, z down</text>\n",
                 kMargin, height - 10.0);
    std::fputs("</svg>\n", out);
}

} // namespace zq::tool
