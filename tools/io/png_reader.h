// png_reader.h: grayscale PNG images, through libpng where the build has it.
#ifndef ZQMATH_TOOLS_IO_PNG_READER_H
#define ZQMATH_TOOLS_IO_PNG_READER_H

#include "raster.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace zq::tool {

/// True when data starts with the PNG signature.
bool LooksLikePng(const unsigned char* data, std::size_t size);

/// Where the bytes of a file come from, in order: fills out with up to count bytes and
/// returns how many (0 at the end).
using ByteSource = std::function<std::size_t(unsigned char* out, std::size_t count)>;

/// The bytes data[0..size) as a source; data must outlive it.
ByteSource MemorySource(const unsigned char* data, std::size_t size);

/// The image in a grayscale PNG file of 1 to 16 bits and size bytes, read as it is decoded,
/// scaled to 16 bits (maximum 65535; an 8-bit value v becomes 257 v, the same fraction of
/// the range). Throws ToolError (status 2) with "NAME: reason" on a colour image, a damaged or
/// truncated file, or in a build without libpng.
Raster ReadPng(const std::string& name, const ByteSource& source, std::uint64_t size);

} // namespace zq::tool

#endif
