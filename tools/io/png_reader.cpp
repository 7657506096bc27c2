// png_reader.cpp: libpng reading from memory, its errors turned into messages.
#include "png_reader.h"

#include "../tool_error.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#ifdef ZQMATH_TOOL_PNG
#include <png.h>
#endif

namespace zq::tool {
namespace {

[[noreturn]] void Fail(const std::string& name, const std::string& what) {
    throw ToolError(kStatusBadInput, name + ": " + what);
}

} // namespace

bool LooksLikePng(const unsigned char* data, std::size_t size) {
    static const unsigned char kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return size >= 8 && std::memcmp(data, kSignature, 8) == 0;
}

ByteSource MemorySource(const unsigned char* data, std::size_t size) {
    return [data, size, at = std::size_t{0}](unsigned char* out, std::size_t count) mutable {
        const std::size_t n = std::min(count, size - at);
        std::memcpy(out, data + at, n);
        at += n;
        return n;
    };
}

#ifdef ZQMATH_TOOL_PNG

namespace {

/// The deflate format expands a byte to at most 1032: a file that claims more pixels than its
/// size can hold is cut short, and is rejected before any memory is taken for it.
constexpr std::size_t kMaxInflation = 1032;

/// The state libpng's callbacks share: the bytes to read and the first error.
struct PngSource {
    const ByteSource* bytes;
    char error[160];
};

void ReadBytes(png_structp png, png_bytep out, png_size_t count) {
    auto* source = static_cast<PngSource*>(png_get_io_ptr(png));
    if ((*source->bytes)(out, count) != count) {
        png_error(png, "the file is truncated");
    }
}

void KeepError(png_structp png, png_const_charp message) {
    auto* source = static_cast<PngSource*>(png_get_error_ptr(png));
    std::snprintf(source->error, sizeof source->error, "%s", message);
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

/// Frees libpng's structures however the reading ends.
class PngReadStruct {
public:
    explicit PngReadStruct(PngSource& source)
        : m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &source, KeepError, IgnoreWarning)),
          m_info(m_png != nullptr ? png_create_info_struct(m_png) : nullptr) {
        if (m_info != nullptr) {
            png_set_read_fn(m_png, &source, ReadBytes);
            png_set_user_limits(m_png, kMaxRasterSide, kMaxRasterSide);
        }
    }
    PngReadStruct(const PngReadStruct&) = delete;
    PngReadStruct& operator=(const PngReadStruct&) = delete;
    ~PngReadStruct() { png_destroy_read_struct(&m_png, &m_info, nullptr); }

    bool Ready() const { return m_info != nullptr; }
    png_structp Png() const { return m_png; }
    png_infop Info() const { return m_info; }

private:
    png_structp m_png;
    png_infop m_info;
};

/// Reads the header and sets the transformations to one 16-bit channel; false
/// with source.error set when the file is not such an image. Only plain data lives in this
/// frame, which libpng leaves by a long jump on errors.
bool ReadHeader(const PngReadStruct& read, PngSource& source, Raster& raster) {
    png_structp png = read.Png();
    png_infop info = read.Info();
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_read_info(png, info);
    if (png_get_color_type(png, info) != PNG_COLOR_TYPE_GRAY) {
        std::snprintf(source.error, sizeof source.error,
                      "not a grayscale image (PNG colour type %d)",
                      static_cast<int>(png_get_color_type(png, info)));
        return false;
    }
    png_set_strip_alpha(png);
    png_set_expand_16(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    raster.width = png_get_image_width(png, info);
    raster.height = png_get_image_height(png, info);
    raster.maximum = 65535;
    return true;
}

/// Reads the pixels into raster.pixels, already sized, as libpng gives them (most
/// significant byte first); false with source.error set when the data is damaged or cut short.
bool ReadPixels(const PngReadStruct& read, Raster& raster) {
    png_structp png = read.Png();
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t y = 0; y < raster.height; ++y) {
            png_read_row(png, reinterpret_cast<png_bytep>(&raster.pixels[y * raster.width]),
                         nullptr);
        }
    }
    png_read_end(png, nullptr);
    return true;
}

/// Turns values stored most significant byte first into the host's order.
void ToHostOrder(std::vector<std::uint16_t>& pixels) {
    for (std::uint16_t& pixel : pixels) {
        unsigned char bytes[2];
        std::memcpy(bytes, &pixel, 2);
        pixel = static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
    }
}

} // namespace

Raster ReadPng(const std::string& name, const ByteSource& bytes, std::uint64_t size) {
    PngSource source{&bytes, "out of memory"};
    PngReadStruct read(source);
    Raster raster;
    if (!read.Ready() || !ReadHeader(read, source, raster)) {
        Fail(name, source.error);
    }
    const std::size_t count = raster.width * raster.height;
    if (png_get_rowbytes(read.Png(), read.Info()) != raster.width * 2 || count > kMaxRasterPixels ||
        count / kMaxInflation > size) {
        Fail(name, std::to_string(raster.width) + " x " + std::to_string(raster.height) +
                       " pixels cannot be in a file of " + std::to_string(size) + " bytes");
    }
    raster.pixels.resize(count);
    if (!ReadPixels(read, raster)) {
        Fail(name, source.error);
    }
    ToHostOrder(raster.pixels);
    return raster;
}

#else

Raster ReadPng(const std::string& name, const ByteSource&, std::uint64_t) {
    Fail(name, "this build of zqmath cannot read PNG (it was built without libpng); "
               "convert the image to PGM");
}

#endif

} // namespace zq::tool
