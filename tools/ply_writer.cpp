// ply_writer.cpp: the mesh as binary little-endian PLY.
#include "mesh_writers.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace zq::tool {
namespace {

/// Appends the low bytes of v, least significant first, whatever the host's byte order.
template <typename T>
void PutLittleEndian(unsigned char*& at, T v) {
    for (std::size_t i = 0; i < sizeof v; ++i) {
        *at++ = static_cast<unsigned char>(v >> (8 * i));
    }
}

void PutDouble(unsigned char*& at, double d) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &d, sizeof bits);
    PutLittleEndian(at, bits);
}

} // namespace

void WritePly(std::FILE* out, const Mesh& mesh) {
    std::fprintf(out,
                 "ply\nformat binary_little_endian 1.0\ncomment zqmath tin\n"
                 "element vertex %s\nproperty double x\nproperty double y\nproperty double z\n"
                 "element face %s\nproperty list uchar int vertex_indices\nend_header\n",
                 std::to_string(mesh.vertices.size()).c_str(),
                 std::to_string(mesh.triangles.size()).c_str());
    unsigned char record[24];
    for (const SFVec3f& v : mesh.vertices) {
        unsigned char* at = record;
        PutDouble(at, v.x);
        PutDouble(at, v.y);
        PutDouble(at, v.z);
        std::fwrite(record, 1, 24, out);
    }
    for (const auto& t : mesh.triangles) {
        unsigned char* at = record;
        *at++ = 3;
        for (std::uint32_t index : t) {
            PutLittleEndian(at, index);
        }
        std::fwrite(record, 1, 13, out);
    }
}

} // namespace zq::tool
