// ply_writer.h: a mesh as binary PLY.
#ifndef ZQMATH_TOOLS_IO_PLY_WRITER_H
#define ZQMATH_TOOLS_IO_PLY_WRITER_H

#include "mesh.h"
#include "progress.h"

#include <cstdio>

namespace zq::tool {

/// PLY, binary little-endian: double x, y, z per vertex, then each triangle as a uchar count
/// of 3 and three int indices.
void WritePly(std::FILE* out, const MeshView& mesh, const ProgressHook& progress = {});

} // namespace zq::tool

#endif
