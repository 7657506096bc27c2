// las_reader.h: samples from an ASPRS LAS point cloud.
#ifndef ZQMATH_TOOLS_IO_LAS_READER_H
#define ZQMATH_TOOLS_IO_LAS_READER_H

#include "input_file.h"
#include "progress.h"

#include <sfvec3f.h>

#include <string_view>
#include <vector>

namespace zq::tool {

/// True when bytes start as a LAS (or LAZ) file does.
bool IsLas(std::string_view bytes);
/// The points of an uncompressed LAS 1.0 to 1.4 file, any point format from 0 to 10, with the
/// header's scale and offset applied: x = X * scale + offset, and so for y and z. Everything
/// but the coordinates is skipped. A LAZ (compressed) file is refused. Throws InputError
/// naming the header or the point record (counted from 1).
std::vector<SFVec3f> ReadLas(InputFile& in, const ProgressHook& progress);

} // namespace zq::tool

#endif
