// ply_writer.cpp: the mesh as binary little-endian PLY.
#include "ply_writer.h"

#include "block_output.h"

namespace zq::tool {
namespace {

/// Items written between two progress reports.
constexpr std::size_t kProgressStep = 1 << 16;

} // namespace

void WritePly(std::FILE* out, const MeshView& mesh, const ProgressHook& progress) {
    const std::size_t vertices = mesh.VertexCount();
    const std::size_t total = vertices + mesh.TriangleCount();
    BlockOutput bytes(out);
    bytes.Put("ply\nformat binary_little_endian 1.0\ncomment zqmath\nelement vertex ");
    bytes.PutUnsigned(vertices);
    bytes.Put("\nproperty double x\nproperty double y\nproperty double z\nelement face ");
    bytes.PutUnsigned(mesh.TriangleCount());
    bytes.Put("\nproperty list uchar int vertex_indices\nend_header\n");
    for (std::size_t i = 0; i < vertices; ++i) {
        const SFVec3f v = mesh.Vertex(i);
        bytes.PutLittleEndian(v.x);
        bytes.PutLittleEndian(v.y);
        bytes.PutLittleEndian(v.z);
        if (progress && i % kProgressStep == 0) {
            progress(i, total);
        }
    }
    std::size_t done = vertices;
    mesh.VisitTriangles([&](const Triangle* triangles, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            bytes.Put('\3');
            bytes.PutLittleEndian(triangles[i][0]);
            bytes.PutLittleEndian(triangles[i][1]);
            bytes.PutLittleEndian(triangles[i][2]);
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
