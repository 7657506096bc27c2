// mesh_command.cpp: `zqmath mesh`: read a heightmap, mesh it, write, report.
#include "../commands.h"
#include "../io/obj_writer.h"
#include "../io/pgm_reader.h"
#include "../io/ply_writer.h"
#include "../io/png_reader.h"
#include "../io/stl_writer.h"
#include "../io/svg_writer.h"
#include "../output_file.h"
#include "../progress.h"
#include "../tool_error.h"
#include "heightmap_mesher.h"
#include "mesh_args.h"
#include "mesh_report.h"
#include "peak_memory.h"
#include "sample_map.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>

namespace zq::tool {
namespace {

void PrintHelp() {
    std::fputs(
        "usage: zqmath mesh [HEIGHTMAP] [--error E] [--triangles N] [--vertices N]\n"
        "                   [--zscale Z] [--base B] [--stl OUT] [--obj OUT] [--ply OUT]\n"
        "                   [--svg OUT]\n"
        "\n"
        "Meshes a heightmap by greedy insertion into a Delaunay triangulation: from the four\n"
        "corner pixels on, the pixel farthest from the mesh goes in, until every pixel is\n"
        "within E of the mesh (the plane of its triangle at the pixel's centre) or a budget is\n"
        "spent. Reports the counts, the largest remaining error, the times and peak memory.\n"
        "\n"
        "  HEIGHTMAP      a grayscale PNG (1 to 16 bits) or PGM (P2 or P5, 8 or 16 bits);\n"
        "                 without it, a built-in 256 x 256 sample map is meshed\n"
        "  --error E      the largest error allowed, a fraction of the format's full range,\n"
        "                 above 0 and below 1 (default 0.01)\n"
        "  --triangles N  stop before the mesh would have more than N triangles (N >= 2)\n"
        "  --vertices N   stop before the mesh would have more than N vertices (N >= 4)\n"
        "  --zscale Z     the height of the full range, in pixels (default: a tenth of the\n"
        "                 map's larger side); x and z are the pixel's column and row\n"
        "  --base B       give the STL a solid base reaching B below height 0\n"
        "  --stl OUT      write the mesh as binary STL\n"
        "  --obj OUT      write the mesh as Wavefront OBJ (faces counter-clockwise from +y)\n"
        "  --ply OUT      write the mesh as binary little-endian PLY\n"
        "  --svg OUT      write a plan view coloured by height, with a legend\n"
        "  -h, --help     show this help\n"
        "\n"
        "A bad heightmap or option stops the run with a message, and no file is written.\n"
        "Exit status: 0 done, 2 bad usage or input, 1 an output could not be written.\n"
        "\n"
        "example: zqmath mesh terrain.png --error 0.001 --stl terrain.stl --base 10\n",
        stdout);
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void CannotRead(const std::string& path, const char* why) {
    throw ToolError(kStatusBadInput, "zqmath: cannot read '" + path + "': " + why);
}

/// The rest of the file.
std::vector<unsigned char> ReadAll(std::FILE* file) {
    std::vector<unsigned char> bytes;
    unsigned char block[65536];
    std::size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, file)) > 0) {
        bytes.insert(bytes.end(), block, block + got);
    }
    return bytes;
}

/// A PNG is decoded as it is read, so that its bytes and its pixels are never held together;
/// a PGM is read whole.
Raster ReadHeightmap(const std::string& path) {
    const File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) {
        CannotRead(path, std::strerror(errno));
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    unsigned char start[8] = {};
    const std::size_t got = std::fread(start, 1, sizeof start, file.get());
    std::rewind(file.get());
    if (LooksLikePng(start, got)) {
        return ReadPng(
            path,
            [&](unsigned char* out, std::size_t count) {
                return std::fread(out, 1, count, file.get());
            },
            error ? 0 : size);
    }
    if (LooksLikePgm(start, got)) {
        const std::vector<unsigned char> bytes = ReadAll(file.get());
        if (std::ferror(file.get())) {
            CannotRead(path, "read error");
        }
        return ReadPgm(path, bytes.data(), bytes.size());
    }
    throw ToolError(kStatusBadInput, path + ": not a PNG or PGM heightmap");
}

/// Heights from the map's levels to pixels: the full range becomes zscale.
void ScaleHeights(Mesh& mesh, double factor) {
    for (SFVec3f& v : mesh.vertices) {
        v.y *= factor;
    }
}

/// Writes every requested file; none takes its name until all are complete.
std::vector<std::string> WriteOutputs(const MeshOptions& options, const HeightmapMesh& result) {
    SolidBase base{result.outline, static_cast<float>(-options.base)};
    const SolidBase* stlBase = options.base > 0.0 ? &base : nullptr;
    const Mesh& mesh = result.mesh;
    const std::pair<const std::string&, std::function<void(std::FILE*)>> outputs[] = {
        {options.stl, [&](std::FILE* out) { WriteStl(out, mesh, stlBase); }},
        {options.obj, [&](std::FILE* out) { WriteObj(out, mesh); }},
        {options.ply, [&](std::FILE* out) { WritePly(out, mesh); }},
        {options.svg, [&](std::FILE* out) { WriteSvg(out, mesh); }}};
    std::vector<std::unique_ptr<OutputFile>> files;
    std::vector<std::string> written;
    for (const auto& output : outputs) {
        if (!output.first.empty()) {
            files.push_back(std::make_unique<OutputFile>(output.first));
            output.second(files.back()->Stream());
            written.push_back(output.first);
        }
    }
    for (const auto& file : files) {
        file->Commit();
    }
    return written;
}

} // namespace

int RunMesh(const std::vector<std::string>& args) {
    const MeshOptions options = ParseMeshArguments(args);
    if (options.help) {
        PrintHelp();
        return 0;
    }
    const Clock::time_point start = Clock::now();
    MeshFacts facts;
    facts.input = options.input.empty() ? "built-in sample map" : options.input;
    HeightmapMesh result;
    {
        const Raster map = options.input.empty() ? SampleMap() : ReadHeightmap(options.input);
        facts.width = map.width;
        facts.height = map.height;
        facts.maximum = map.maximum;
        const Clock::time_point meshStart = Clock::now();
        facts.readSeconds = Seconds(meshStart - start);
        result = MeshHeightmap(map, options.limits);
        facts.meshSeconds = Seconds(Clock::now() - meshStart);
    }
    const double zscale = options.zscale > 0.0
                              ? options.zscale
                              : std::max<double>(std::max(facts.width, facts.height) / 10.0, 1.0);
    ScaleHeights(result.mesh, zscale / facts.maximum);
    facts.errorLimit = options.limits.error;
    facts.vertices = result.mesh.vertices.size();
    facts.triangles = result.mesh.triangles.size();
    facts.largestError = result.largestError;
    facts.written = WriteOutputs(options, result);
    facts.totalSeconds = Seconds(Clock::now() - start);
    facts.peakBytes = PeakMemory();
    PrintMeshReport(stdout, facts);
    return 0;
}

} // namespace zq::tool
