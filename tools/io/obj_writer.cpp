// obj_writer.cpp: the mesh as Wavefront OBJ text.
#include "obj_writer.h"

#include "block_output.h"

namespace zq::tool {
namespace {

/// Items written between two progress reports.
constexpr std::size_t kProgressStep = 1 << 16;

} // namespace

void WriteObj(std::FILE* out, const MeshView& mesh, const ProgressHook& progress) {
    const std::size_t vertices = mesh.VertexCount();
    const std::size_t total = vertices + mesh.TriangleCount();
    BlockOutput text(out);
    text.Put("# zqmath: ");
    text.PutUnsigned(vertices);
    text.Put(" vertices, ");
    text.PutUnsigned(mesh.TriangleCount());
    text.Put(" triangles\n");
    for (std::size_t i = 0; i < vertices; ++i) {
        const SFVec3f v = mesh.Vertex(i);
        text.Put("v ");
        text.PutNumber(v.x);
        text.Put(' ');
        text.PutNumber(v.y);
        text.Put(' ');
        text.PutNumber(v.z);
        text.Put('\n');
        if (progress && i % kProgressStep == 0) {
            progress(i, total);
        }
    }
    std::size_t done = vertices;
    mesh.VisitTriangles([&](const Triangle* triangles, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            text.Put("f ");
            text.PutUnsigned(triangles[i][0] + std::uint64_t{1});
            text.Put(' ');
            text.PutUnsigned(triangles[i][1] + std::uint64_t{1});
            text.Put(' ');
            text.PutUnsigned(triangles[i][2] + std::uint64_t{1});
            text.Put('\n');
        }
        done += count;
        if (progress) {
            progress(done, total);
        }
    });
    if (progress) {
        progress(total, total);
    }
}

} // namespace zq::tool
