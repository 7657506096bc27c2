// pgm_reader.h: Netpbm grayscale images, plain (P2) and raw (P5).
#ifndef ZQMATH_TOOLS_IO_PGM_READER_H
#define ZQMATH_TOOLS_IO_PGM_READER_H

#include "raster.h"

#include <cstddef>
#include <string>

namespace zq::tool {

/// True when data starts like a PGM file ("P2" or "P5").
bool LooksLikePgm(const unsigned char* data, std::size_t size);

/// The image in the bytes of a PGM file: maximum is the header's maxval (1 to 65535); raw
/// files hold one byte a pixel below 256, two (most significant first) from 256 up. Throws
/// ToolError (status 2) with "NAME:LINE: reason" on a bad header, a value above maxval or
/// missing pixels.
Raster ReadPgm(const std::string& name, const unsigned char* data, std::size_t size);

} // namespace zq::tool

#endif
