// ply_reader.h: samples from the vertices of a PLY file.
#ifndef ZQMATH_TOOLS_IO_PLY_READER_H
#define ZQMATH_TOOLS_IO_PLY_READER_H

#include "input_file.h"
#include "progress.h"

#include <sfvec3f.h>

#include <string_view>
#include <vector>

namespace zq::tool {

/// True when bytes start as a PLY file does.
bool IsPly(std::string_view bytes);
/// The x, y and z properties of the "vertex" element of a PLY file, ASCII or binary of either
/// byte order, whatever other elements and properties (lists too) and types it has. Values must
/// be finite. Throws InputError naming the header line or the vertex record (counted from 1).
std::vector<SFVec3f> ReadPly(InputFile& in, const ProgressHook& progress);

} // namespace zq::tool

#endif
