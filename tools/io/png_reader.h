// png_reader.h: grayscale PNG images, through libpng where the build has it.
#ifndef ZQMATH_TOOLS_IO_PNG_READER_H
#define ZQMATH_TOOLS_IO_PNG_READER_H

#include "raster.h"

#include <cstddef>
#include <string>

namespace zq::tool {

/// True when data starts with the PNG signature.
bool LooksLikePng(const unsigned char* data, std::size_t size);

/// The image in the bytes of a grayscale PNG file of 1 to 16 bits, scaled to 16 bits
/// (maximum 65535; an 8-bit value v becomes 257 v, the same fraction of the range). Throws
/// ToolError (status 2) with "NAME: reason" on a colour image, a damaged or truncated file, or
/// in a build without libpng.
Raster ReadPng(const std::string& name, const unsigned char* data, std::size_t size);

} // namespace zq::tool

#endif
