// The heightmap readers and the STL writer, on files the tests make.
#include "../../tools/io/pgm_reader.h"
#include "../../tools/io/png_reader.h"
#include "../../tools/io/stl_writer.h"
#include "../../tools/tool_error.h"

#include <gtest/gtest.h>

#ifdef ZQMATH_TOOL_PNG
#include <png.h>
#endif

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace zq::tool;

Raster Pgm(const std::string& text) {
    return ReadPgm("map.pgm", reinterpret_cast<const unsigned char*>(text.data()), text.size());
}

std::string PgmError(const std::string& text) {
    try {
        Pgm(text);
    } catch (const ToolError& e) {
        EXPECT_EQ(e.Status(), kStatusBadInput);
        return e.what();
    }
    return "no error";
}

TEST(PgmReader, PlainAndRawOfEitherWidth) {
    const Raster plain = Pgm("P2\n# a comment 7\n3 2\n# another\n1000\n0 1 2\n998 999 1000\n");
    EXPECT_EQ(plain.width, 3u);
    EXPECT_EQ(plain.height, 2u);
    EXPECT_EQ(plain.maximum, 1000u);
    EXPECT_EQ(plain.pixels, (std::vector<std::uint16_t>{0, 1, 2, 998, 999, 1000}));
    // One byte a pixel below 256; the single blank after the header may be a newline
    // followed by a byte that looks like a blank.
    const Raster narrow = Pgm(std::string("P5 2 1 255\n\n\xff", 13));
    EXPECT_EQ(narrow.pixels, (std::vector<std::uint16_t>{'\n', 255}));
    // Two bytes, most significant first, from 256 up.
    const Raster wide = Pgm(std::string("P5\n2 1\n65535\n\x01\x02\xff\xfe", 17));
    EXPECT_EQ(wide.maximum, 65535u);
    EXPECT_EQ(wide.pixels, (std::vector<std::uint16_t>{0x0102, 0xfffe}));
}

TEST(PgmReader, BadFilesNameTheLine) {
    EXPECT_EQ(PgmError("P6\n1 1 255\n\x01"),
              "map.pgm:1: not a PGM file (it must start with P2 or P5)");
    EXPECT_EQ(PgmError("P2\n# w\n\nx 1 255\n"), "map.pgm:4: 'x' where the width was expected");
    EXPECT_EQ(PgmError("P2 2\n"), "map.pgm:2: the file ends where the height was expected");
    EXPECT_EQ(PgmError("P2 1 1 70000 1"), "map.pgm:1: the maximum value is above 65535");
    EXPECT_EQ(PgmError("P2 0 1 255 1"),
              "map.pgm:1: the width, height and maximum value must not be 0");
    EXPECT_EQ(PgmError("P2 2 1 9\n3\n10\n"), "map.pgm:3: the pixel value is above 9");
    EXPECT_EQ(PgmError("P5 2 2 255\nabc"), "map.pgm:2: the raster ends after 3 of 4 pixels");
    EXPECT_EQ(PgmError("P5 2 1 300\n\x01\x2d\x01"),
              "map.pgm:2: the raster ends after 1 of 2 pixels");
    EXPECT_EQ(PgmError(std::string("P5 1 1 300\n\x01\x2d", 13)),
              "map.pgm:2: pixel 0 is 301, above the maximum value 300");
    // Claims more pixels than the file has bytes: refused before memory is taken.
    EXPECT_EQ(PgmError("P5 60000 60000 255\n"),
              "map.pgm:1: 60000 x 60000 pixels cannot be in a file of 19 bytes");
}

#ifdef ZQMATH_TOOL_PNG

/// A PNG of the given simplified-API format holding pixels.
std::vector<unsigned char> MakePng(std::uint32_t format, int width, int height,
                                   const void* pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = format;
    png_alloc_size_t size = 0;
    EXPECT_TRUE(png_image_write_to_memory(&image, nullptr, &size, 0, pixels, 0, nullptr));
    std::vector<unsigned char> bytes(size);
    EXPECT_TRUE(png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels, 0, nullptr));
    return bytes;
}

std::string PngError(const std::vector<unsigned char>& bytes) {
    try {
        ReadPng("map.png", MemorySource(bytes.data(), bytes.size()), bytes.size());
    } catch (const ToolError& e) {
        EXPECT_EQ(e.Status(), kStatusBadInput);
        return e.what();
    }
    return "no error";
}

TEST(PngReader, GrayOfEightAndSixteenBitsAndBadFiles) {
    const std::uint8_t gray8[6] = {0, 1, 128, 200, 254, 255};
    const std::vector<unsigned char> png8 = MakePng(PNG_FORMAT_GRAY, 3, 2, gray8);
    ASSERT_TRUE(LooksLikePng(png8.data(), png8.size()));
    const Raster r8 = ReadPng("map.png", MemorySource(png8.data(), png8.size()), png8.size());
    EXPECT_EQ(r8.width, 3u);
    EXPECT_EQ(r8.height, 2u);
    EXPECT_EQ(r8.maximum, 65535u);
    // 257 v: the same fraction of the range.
    EXPECT_EQ(r8.pixels, (std::vector<std::uint16_t>{0, 257, 32896, 51400, 65278, 65535}));

    const std::uint16_t gray16[4] = {0, 0x0102, 0xfffe, 65535};
    const std::vector<unsigned char> png16 = MakePng(PNG_FORMAT_LINEAR_Y, 2, 2, gray16);
    EXPECT_EQ(ReadPng("map.png", MemorySource(png16.data(), png16.size()), png16.size()).pixels,
              (std::vector<std::uint16_t>{0, 0x0102, 0xfffe, 65535}));

    const std::uint8_t rgb[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(PngError(MakePng(PNG_FORMAT_RGB, 2, 1, rgb)),
              "map.png: not a grayscale image (PNG colour type 2)");
    for (std::size_t keep : {std::size_t{8}, std::size_t{30}, png16.size() - 20}) {
        const std::vector<unsigned char> cut(png16.begin(), png16.begin() + keep);
        EXPECT_NE(PngError(cut).find("map.png: "), std::string::npos) << keep;
    }
}

#else

TEST(PngReader, ThisBuildSaysItCannotReadPng) {
    const unsigned char bytes[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    try {
        ReadPng("map.png", MemorySource(bytes, 8), 8);
        FAIL();
    } catch (const ToolError& e) {
        EXPECT_NE(std::string(e.what()).find("map.png: this build of zqmath cannot read PNG"),
                  std::string::npos);
    }
}

#endif

float FloatAt(const std::string& bytes, std::size_t at) {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) {
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    }
    float f = 0;
    std::memcpy(&f, &bits, 4);
    return f;
}

std::string Stl(const Mesh& mesh, const SolidBase* base) {
    std::FILE* file = std::tmpfile();
    WriteStl(file, mesh, base);
    std::string bytes(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    EXPECT_EQ(std::fread(&bytes[0], 1, bytes.size(), file), bytes.size());
    std::fclose(file);
    return bytes;
}

TEST(StlWriter, FacetsAndSolidBaseFaceOutwards) {
    // A unit square seen from +y, counter-clockwise, at height 2.
    Mesh mesh;
    mesh.vertices = {SFVec3f(0, 2, 0), SFVec3f(0, 2, 1), SFVec3f(1, 2, 1), SFVec3f(1, 2, 0)};
    mesh.triangles = {{0, 1, 2}, {0, 2, 3}};
    const std::string top = Stl(mesh, nullptr);
    ASSERT_EQ(top.size(), 84u + 2 * 50);
    EXPECT_EQ(static_cast<unsigned char>(top[80]), 2);
    EXPECT_FLOAT_EQ(FloatAt(top, 84 + 4), 1.0f);  // normal y
    EXPECT_FLOAT_EQ(FloatAt(top, 84 + 16), 2.0f); // first corner's y

    const SolidBase base{{0, 3, 2, 1}, -1.0f};
    const std::string solid = Stl(mesh, &base);
    ASSERT_EQ(solid.size(), 84u + 14 * 50);
    // Every facet of the closed solid faces away from the box's centre (0.5, 0.5, 0.5).
    for (std::size_t at = 84; at < solid.size(); at += 50) {
        double n[3];
        double centre[3] = {0, 0, 0};
        for (int k = 0; k < 3; ++k) {
            n[k] = FloatAt(solid, at + 4 * k);
            for (int c = 1; c <= 3; ++c) {
                centre[k] += FloatAt(solid, at + 12 * c + 4 * k) / 3;
            }
        }
        const double out =
            n[0] * (centre[0] - 0.5) + n[1] * (centre[1] - 0.5) + n[2] * (centre[2] - 0.5);
        EXPECT_GT(out, 0.0) << "facet at byte " << at;
    }
}

} // namespace
