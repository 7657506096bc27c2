// raster.h: a grayscale image as the heightmap readers give it.
#ifndef ZQMATH_TOOLS_IO_RASTER_H
#define ZQMATH_TOOLS_IO_RASTER_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zq::tool {

/// Pixels in rows from the top, each row from the left; every value lies in 0..maximum, the
/// full range of the file's format.
struct Raster {
    std::size_t width = 0;
    std::size_t height = 0;
    std::uint32_t maximum = 0;
    std::vector<std::uint16_t> pixels;

    /// The value of the pixel in column x of row y.
    std::uint16_t At(std::size_t x, std::size_t y) const { return pixels[y * width + x]; }
};

/// The largest width or height a reader accepts, and the most pixels.
constexpr std::size_t kMaxRasterSide = 65535;
constexpr std::size_t kMaxRasterPixels = std::size_t{1} << 28;

} // namespace zq::tool

#endif
