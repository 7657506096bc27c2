// svg_writer.cpp: the plan view, coloured by height, with its legend.
#include "svg_writer.h"

#include "block_output.h"

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

/// The extent of the vertices, and the map from the plan (x, and y or z) to the page.
struct View {
    int up = 1;
    /// The plan's second axis: z when y is up (drawn down the page), y when z is up (drawn up).
    int across = 2;
    double min[3] = {0.0, 0.0, 0.0};
    double max[3] = {0.0, 0.0, 0.0};
    double scale = 1.0;
    double width = 0.0, height = 0.0;

    explicit View(const MeshView& mesh) : up(mesh.Up()), across(mesh.Up() == 2 ? 1 : 2) {
        for (std::size_t i = 0; i < mesh.VertexCount(); ++i) {
            const SFVec3f v = mesh.Vertex(i);
            for (int axis = 0; axis < 3; ++axis) {
                min[axis] = i == 0 ? v[axis] : std::min(min[axis], v[axis]);
                max[axis] = i == 0 ? v[axis] : std::max(max[axis], v[axis]);
            }
        }
        const double extent = std::max(max[0] - min[0], max[across] - min[across]);
        scale = extent > 0.0 ? kPlotSize / extent : 1.0;
        width = (max[0] - min[0]) * scale;
        height = (max[across] - min[across]) * scale;
    }
    /// The height as a fraction of the range; the middle for a flat mesh.
    double Level(double h) const {
        return max[up] > min[up] ? (h - min[up]) / (max[up] - min[up]) : 0.5;
    }
    double PageX(const SFVec3f& v) const { return kMargin + (v.x - min[0]) * scale; }
    double PageY(const SFVec3f& v) const {
        return kTop + (up == 2 ? max[across] - v[across] : v[across] - min[across]) * scale;
    }
};

/// The triangles as one path per colour band.
void WriteTriangles(BlockOutput& out, const MeshView& mesh, const View& view,
                    const ProgressHook& progress) {
    std::vector<std::vector<Triangle>> bands(kBands);
    mesh.VisitTriangles([&](const Triangle* triangles, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const Triangle& t = triangles[i];
            const double mean = (mesh.Vertex(t[0])[view.up] + mesh.Vertex(t[1])[view.up] +
                                 mesh.Vertex(t[2])[view.up]) /
                                3.0;
            bands[std::min(static_cast<int>(view.Level(mean) * kBands), kBands - 1)].push_back(t);
        }
    });
    std::size_t done = 0;
    for (int band = 0; band < kBands; ++band) {
        if (bands[band].empty()) {
            continue;
        }
        // A stroke of the fill colour closes the hairline gaps that anti-aliasing leaves.
        const std::string colour = RampColour((band + 0.5) / kBands);
        out.Put("<path fill=\"" + colour + "\" stroke=\"" + colour + "\" d=\"");
        for (const Triangle& t : bands[band]) {
            for (int k = 0; k < 3; ++k) {
                const SFVec3f v = mesh.Vertex(t[k]);
                char text[64];
                const int n = std::snprintf(text, sizeof text, "%c%.1f %.1f", k == 0 ? 'M' : 'L',
                                            view.PageX(v), view.PageY(v));
                out.Put(std::string_view(text, static_cast<std::size_t>(n)));
            }
            out.Put('Z');
        }
        out.Put("\"/>\n");
        done += bands[band].size();
        std::vector<Triangle>().swap(bands[band]);
        if (progress) {
            progress(done, mesh.TriangleCount());
        }
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
    const double top = view.max[view.up];
    const double bottom = view.min[view.up];
    const double levels[] = {top, 0.5 * (bottom + top), bottom};
    for (int i = 0; i < 3; ++i) {
        const double y = kTop + barHeight * i / 2.0;
        std::fprintf(out, "<text x=\"%.1f\" y=\"%.1f\" dominant-baseline=\"middle\">%.4g</text>\n",
                     x + 28.0, y, levels[i]);
    }
}

} // namespace

void WriteSvg(std::FILE* out, const MeshView& mesh, const ProgressHook& progress) {
    const View view(mesh);
    const double width = kMargin + view.width + 30.0 + kLegendWidth;
    const double height = kTop + std::max(view.height, 160.0) + kMargin + 16.0;
    std::fprintf(out,
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" "
                 "viewBox=\"0 0 %.0f %.0f\" font-family=\"sans-serif\" font-size=\"13\">\n",
                 width, height, width, height);
    std::fprintf(out, "<rect width=\"100%%\" height=\"100%%\" fill=\"white\"/>\n");
    std::fprintf(out,
                 "<text x=\"%.1f\" y=\"24\" font-size=\"15\">zqmath: %s vertices, %s "
                 "triangles</text>\n",
                 kMargin, std::to_string(mesh.VertexCount()).c_str(),
                 std::to_string(mesh.TriangleCount()).c_str());
    std::fprintf(out, "<g stroke-width=\"0.4\" stroke-linejoin=\"round\">\n");
    {
        BlockOutput block(out);
        WriteTriangles(block, mesh, view, progress);
    }
    std::fputs("</g>\n", out);
    WriteLegend(out, view);
    std::fprintf(out,
                 "<text x=\"%.1f\" y=\"%.1f\" font-size=\"11\" fill=\"#555\">plan view from "
                 "above: x to the right, %s</text>\n",
                 kMargin, height - 10.0, view.up == 2 ? "y up" : "z down");
    std::fputs("</svg>\n", out);
}

} // namespace zq::tool
