// svg_writer.h: a mesh as a plan view in SVG.
#ifndef ZQMATH_TOOLS_IO_SVG_WRITER_H
#define ZQMATH_TOOLS_IO_SVG_WRITER_H

#include "mesh.h"
#include "progress.h"

#include <cstdio>

namespace zq::tool {

/// SVG plan view seen from above (x to the right; z down when y is up, y up when z is up),
/// triangles filled by their mean height on a perceptual colour ramp, with a legend of the
/// height range.
void WriteSvg(std::FILE* out, const MeshView& mesh, const ProgressHook& progress = {});

} // namespace zq::tool

#endif
