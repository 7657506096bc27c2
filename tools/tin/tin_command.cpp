// tin_command.cpp: `zqmath tin`: read, triangulate, write, report.
#include "commands.h"
#include "io/obj_writer.h"
#include "io/ply_writer.h"
#include "io/sample_reader.h"
#include "io/svg_writer.h"
#include "output_file.h"
#include "progress.h"
#include "sample_terrain.h"
#include "terminal.h"
#include "tin_args.h"
#include "tin_mesh.h"
#include "tin_report.h"
#include "tool_error.h"

#include <c2triangulation.h>

#include <chrono>
#include <memory>
#include <utility>

namespace zq::tool {
namespace {

void PrintHelp() {
    std::fputs(
        "usage: zqmath tin [FILE|-] [--obj OUT] [--ply OUT] [--svg OUT] [--up z|y]\n"
        "                  [--threads N] [--quiet]\n"
        "\n"
        "Triangulates height samples (Delaunay in the plan) and reports the counts, the extent,\n"
        "the statistics of the heights of all samples read, and the time taken.\n"
        "\n"
        "  FILE          LAS 1.0 to 1.4 (uncompressed, point formats 0 to 10; LAZ is refused),\n"
        "                PLY (the vertex element's x, y and z; ASCII or binary), or text: one\n"
        "                sample \"x y z\" a line, blanks or commas between the numbers, '#'\n"
        "                starts a comment; a first line of column names picks the columns\n"
        "                named x, y and z. The format is told by the content. '-' reads\n"
        "                standard input. Without FILE, a built-in terrain of 3600 samples.\n"
        "  --obj OUT     write the mesh as Wavefront OBJ (faces counter-clockwise from above)\n"
        "  --ply OUT     write the mesh as binary little-endian PLY\n"
        "  --svg OUT     write a plan view coloured by height, with a legend\n"
        "  --up z|y      the coordinate that is the height (default z); the plan is the other\n"
        "                two, and the outputs keep the input's axes\n"
        "  --threads N   threads the triangulation may use (default: the machine's cores)\n"
        "  -q, --quiet   no progress lines (shown on a terminal for steps over a second)\n"
        "  -h, --help    show this help\n"
        "\n"
        "Bad input stops the run with the file, the line or record (counted from 1) and the\n"
        "reason, and no file is written.\n"
        "Exit status: 0 done, 2 bad usage or input, 1 an output could not be written.\n"
        "\n"
        "example: zqmath tin --obj terrain.obj --svg terrain.svg\n",
        stdout);
}

/// Writes every requested file; none takes its name until all are complete.
std::vector<std::string> WriteOutputs(const TinOptions& options, const MeshView& mesh,
                                      bool showProgress) {
    const struct {
        const std::string& path;
        void (*write)(std::FILE*, const MeshView&, const ProgressHook&);
    } outputs[] = {{options.obj, &WriteObj}, {options.ply, &WritePly}, {options.svg, &WriteSvg}};
    std::vector<std::unique_ptr<OutputFile>> files;
    std::vector<std::string> written;
    for (const auto& output : outputs) {
        if (!output.path.empty()) {
            files.push_back(std::make_unique<OutputFile>(output.path));
            output.write(files.back()->Stream(), mesh,
                         ProgressLine("writing " + Printable(output.path), showProgress));
            written.push_back(output.path);
        }
    }
    for (const auto& file : files) {
        file->Commit();
    }
    return written;
}

/// The samples of the input, or the built-in terrain.
SampleFile ReadInput(const TinOptions& options, bool showProgress) {
    if (options.input.empty()) {
        return SampleFile{SampleTerrain(), "built-in"};
    }
    return ReadSamples(options.input, ProgressLine("reading", showProgress));
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
    const bool showProgress = !options.quiet && IsTerminal(stderr);
    const Clock::time_point start = Clock::now();
    SampleFile input = ReadInput(options, showProgress);
    std::vector<SFVec3f>& samples = input.samples;
    const SampleSummary summary = Summarize(samples, options.up);
    const Clock::time_point read = Clock::now();

    // The triangulation's plan is x-z, its height y.
    if (options.up == 2) {
        for (SFVec3f& p : samples) {
            std::swap(p.y, p.z);
        }
    }
    C2TriangulationOptions triangulationOptions;
    triangulationOptions.threads = options.threads;
    triangulationOptions.progress = ProgressLine("triangulating", showProgress);
    const C2Triangulation triangulation(samples, triangulationOptions);
    const TinMesh mesh(triangulation, samples, options.up);
    const Clock::time_point triangulated = Clock::now();

    TinFacts facts;
    facts.input = InputName(options.input);
    facts.format = input.format;
    facts.up = options.up;
    facts.kept = triangulation.GetKept();
    facts.duplicates = triangulation.GetDuplicates();
    facts.rejected = triangulation.GetRejected();
    facts.triangles = mesh.TriangleCount();
    facts.planArea = mesh.PlanArea();
    facts.written = WriteOutputs(options, mesh, showProgress);
    const Clock::time_point end = Clock::now();
    facts.readSeconds = Seconds(read - start);
    facts.triangulationSeconds = Seconds(triangulated - read);
    facts.writeSeconds = Seconds(end - triangulated);
    facts.totalSeconds = Seconds(end - start);
    PrintTinReport(stdout, facts, summary);
    return 0;
}

} // namespace zq::tool
