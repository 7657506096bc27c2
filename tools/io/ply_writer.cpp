// ply_writer.cpp: the mesh as binary little-endian PLY.
#include "ply_writer.h"

#include "block_output.h"

namespace zq::tool {

void WritePly(std::FILE* out, const MeshView& mesh, const ProgressHook& progress) {
    BlockOutput bytes(out);
    bytes.Put("ply\nformat binary_little_endian 1.0\ncomment zqmath\nelement vertex ");
    bytes.PutUnsigned(mesh.VertexCount());
    bytes.Put("\nproperty double x\nproperty double y\nproperty double z\nelement face ");
    bytes.PutUnsigned(mesh.TriangleCount());
    bytes.Put("\nproperty list uchar int vertex_indices\nend_header\n");
    WalkMesh(
        mesh, progress,
        [&](const SFVec3f& v) {
            bytes.PutLittleEndian(v.x);
            bytes.PutLittleEndian(v.y);
            bytes.PutLittleEndian(v.z);
        },
        [&](const Triangle& t) {
            bytes.Put('\3');
            bytes.PutLittleEndian(t[0]);
            bytes.PutLittleEndian(t[1]);
            bytes.PutLittleEndian(t[2]);
        });
}

} // namespace zq::tool
