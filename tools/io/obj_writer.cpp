// obj_writer.cpp: the mesh as Wavefront OBJ text.
#include "obj_writer.h"

#include "block_output.h"

namespace zq::tool {

void WriteObj(std::FILE* out, const MeshView& mesh, const ProgressHook& progress) {
    BlockOutput text(out);
    text.Put("# zqmath: ");
    text.PutUnsigned(mesh.VertexCount());
    text.Put(" vertices, ");
    text.PutUnsigned(mesh.TriangleCount());
    text.Put(" triangles\n");
    WalkMesh(
        mesh, progress,
        [&](const SFVec3f& v) {
            text.Put("v ");
            text.PutNumber(v.x);
            text.Put(' ');
            text.PutNumber(v.y);
            text.Put(' ');
            text.PutNumber(v.z);
            text.Put('\n');
        },
        [&](const Triangle& t) {
            text.Put("f ");
            text.PutUnsigned(t[0] + std::uint64_t{1});
            text.Put(' ');
            text.PutUnsigned(t[1] + std::uint64_t{1});
            text.Put(' ');
            text.PutUnsigned(t[2] + std::uint64_t{1});
            text.Put('\n');
        });
}

} // namespace zq::tool
