// tin_command.cpp: `zqmath tin`: read, triangulate, write, report.
#include "commands.h"
#include "mesh_writers.h"
#include "output_file.h"
#include "sample_reader.h"
#include "sample_terrain.h"
#include "terminal.h"
#include "tin_args.h"
#include "tin_report.h"
#include "tin_triangulate.h"

#include <chrono>
#include <memory>

namespace zq::tool {
namespace {

using Clock = std::chrono::steady_clock;

/// Progress is shown for inputs larger than this, when standard error is a terminal.
constexpr std::size_t kProgressThreshold = 100000;

void PrintHelp() {
    std::fputs(
        "usage: zqmath tin [FILE|-] [--obj OUT] [--ply OUT] [--svg OUT]\n"
        "\n"
        "Triangulates height samples (Delaunay in the x-z plane, y is the height) and reports\n"
        "the counts, the time taken and the statistics of the heights.\n"
        "\n"
        "  FILE        one sample \"x y z\" a line, blanks or commas between the numbers;\n"
        "              '#' starts a comment. '-' reads standard input. Without FILE, a\n"
        "              built-in sample terrain of 3600 samples is used.\n"
        "  --obj OUT   write the mesh as Wavefront OBJ (faces counter-clockwise seen from +y)\n"
        "  --ply OUT   write the mesh as binary little-endian PLY\n"
        "  --svg OUT   write a plan view coloured by height, with a legend\n"
        "  -h, --help  show this help\n"
        "\n"
        "A bad line stops the run with FILE:LINE: and the reason, and no file is written.\n"
        "Exit status: 0 done, 2 bad usage or input, 1 an output could not be written.\n"
        "\n"
        "example: zqmath tin --obj terrain.obj --svg terrain.svg\n",
        stdout);
}

double Seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

/// A progress line on standard error, rewritten in place when the percentage changes.
ProgressHook ProgressLine() {
    return [last = -1](std::size_t done, std::size_t total) mutable {
        const int percent =
            static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total));
        if (percent == last) {
            return;
        }
        last = percent;
        std::fprintf(stderr, "\rzqmath: triangulating %s samples: %3d%%",
                     std::to_string(total).c_str(), percent);
        if (done == total) {
            std::fputc('\n', stderr);
        }
        std::fflush(stderr);
    };
}

/// Writes every requested file; none takes its name until all are complete.
std::vector<std::string> WriteOutputs(const TinOptions& options, const Mesh& mesh) {
    const struct {
        const std::string& path;
        void (*write)(std::FILE*, const Mesh&);
    } outputs[] = {{options.obj, &WriteObj}, {options.ply, &WritePly}, {options.svg, &WriteSvg}};
    std::vector<std::unique_ptr<OutputFile>> files;
    std::vector<std::string> written;
    for (const auto& output : outputs) {
        if (!output.path.empty()) {
            files.push_back(std::make_unique<OutputFile>(output.path));
            output.write(files.back()->Stream(), mesh);
            written.push_back(output.path);
        }
    }
    for (const auto& file : files) {
        file->Commit();
    }
    return written;
}

std::string InputName(const std::string& input) {
    if (input.empty()) {
        return "built-in sample terrain";
    }
    return input == "-" ? "standard input" : input;
}

} // namespace

int RunTin(const std::vector<std::string>& args) {
    const TinOptions options = ParseTinArguments(args);
    if (options.help) {
        PrintHelp();
        return 0;
    }
    const Clock::time_point start = Clock::now();
    const std::vector<SFVec3f> samples =
        options.input.empty() ? SampleTerrain() : ReadSamples(options.input);

    const bool showProgress = samples.size() > kProgressThreshold && IsTerminal(stderr);
    const Clock::time_point triangulationStart = Clock::now();
    const Triangulation triangulation =
        Triangulate(samples, showProgress ? ProgressLine() : ProgressHook());
    const Clock::duration triangulationTime = Clock::now() - triangulationStart;

    const Mesh mesh = MakeMesh(*triangulation.subdivision);
    TinFacts facts;
    facts.input = InputName(options.input);
    facts.inserted = triangulation.inserted;
    facts.duplicates = triangulation.duplicates;
    facts.rejected = triangulation.rejected;
    facts.triangles = mesh.triangles.size();
    facts.written = WriteOutputs(options, mesh);
    facts.triangulationSeconds = Seconds(triangulationTime);
    facts.totalSeconds = Seconds(Clock::now() - start);
    PrintTinReport(stdout, facts, samples);
    return 0;
}

} // namespace zq::tool
