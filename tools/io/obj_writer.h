// obj_writer.h: a mesh as Wavefront OBJ.
#ifndef ZQMATH_TOOLS_IO_OBJ_WRITER_H
#define ZQMATH_TOOLS_IO_OBJ_WRITER_H

#include "mesh.h"
#include "progress.h"

#include <cstdio>

namespace zq::tool {

/// Wavefront OBJ: a comment with the counts, "v x y z" lines (shortest exact numbers), then
/// "f" lines with 1-based indices.
void WriteObj(std::FILE* out, const MeshView& mesh, const ProgressHook& progress = {});

} // namespace zq::tool

#endif
