// obj_writer.cpp: the mesh as Wavefront OBJ text.
#include "mesh_writers.h"
#include "number_text.h"

namespace zq::tool {

void WriteObj(std::FILE* out, const Mesh& mesh) {
    std::fprintf(out, "# zqmath tin: %s vertices, %s triangles\n",
                 std::to_string(mesh.vertices.size()).c_str(),
                 std::to_string(mesh.triangles.size()).c_str());
    for (const SFVec3f& v : mesh.vertices) {
        std::fputs("v ", out);
        PutNumber(out, v.x);
        std::fputc(' ', out);
        PutNumber(out, v.y);
        std::fputc(' ', out);
        PutNumber(out, v.z);
        std::fputc('\n', out);
    }
    for (const auto& t : mesh.triangles) {
        std::fprintf(out, "f %lu %lu %lu\n", static_cast<unsigned long>(t[0] + 1),
                     static_cast<unsigned long>(t[1] + 1), static_cast<unsigned long>(t[2] + 1));
    }
}

} // namespace zq::tool
