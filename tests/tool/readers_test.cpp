// The tool's readers on files the tests write: every LAS point format and header version with
// scale and offset, PLY in its three encodings with other elements and properties around the
// vertices, text with column names, and the messages of broken files.
#include "las_reader.h"
#include "ply_reader.h"
#include "text_reader.h"
#include "tool_error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace zq::tool;

/// Appends the n low bytes of v, least significant first (or most, when big).
void Put(std::string& bytes, std::uint64_t v, int n, bool big = false) {
    for (int i = 0; i < n; ++i) {
        bytes += static_cast<char>(v >> (8 * (big ? n - 1 - i : i)));
    }
}

void PutDouble(std::string& bytes, double d, bool big = false) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &d, sizeof bits);
    Put(bytes, bits, 8, big);
}

/// The message of the ToolError that read throws on bytes, or "" when it throws none.
template <typename Read>
std::string Failure(Read read, const std::string& bytes) {
    InputFile in("f", bytes);
    try {
        read(in, ProgressHook());
    } catch (const ToolError& e) {
        EXPECT_EQ(e.Status(), kStatusBadInput);
        return e.what();
    }
    return "";
}

template <typename Read>
std::vector<SFVec3f> Samples(Read read, const std::string& bytes) {
    InputFile in("f", bytes);
    return read(in, ProgressHook());
}

const unsigned kMinimumRecord[] = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};

/// A LAS file laid out from the format's description: the public header block of the version,
/// a gap of vlrBytes before the points, and records of the point format's size plus extra bytes.
std::string Las(int minor, int format, const std::vector<std::array<std::int32_t, 3>>& points,
                int extra = 0, int vlrBytes = 0) {
    const unsigned headerSize = minor >= 4 ? 375 : minor == 3 ? 235 : 227;
    const unsigned recordLength = kMinimumRecord[format] + extra;
    std::string b = "LASF";
    b.append(20, '\0');            // file source, encoding, GUID
    b += static_cast<char>(1);     // version major
    b += static_cast<char>(minor); // version minor
    b.append(64, ' ');             // system, software
    Put(b, 0, 4);                  // day, year
    Put(b, headerSize, 2);
    Put(b, headerSize + vlrBytes, 4); // offset to points
    Put(b, 0, 4);                     // VLR count
    Put(b, format, 1);
    Put(b, recordLength, 2);
    // Formats 6 to 10 leave the legacy count at 0.
    Put(b, format >= 6 ? 0 : points.size(), 4);
    b.append(20, '\0'); // legacy counts by return
    for (const double scale : {0.01, 0.5, 0.001}) {
        PutDouble(b, scale);
    }
    for (const double offset : {1000.0, -20.0, 0.25}) {
        PutDouble(b, offset);
    }
    b.append(48, '\0'); // extent
    if (minor >= 3) {
        Put(b, 0, 8); // waveform data
    }
    if (minor >= 4) {
        Put(b, 0, 8); // first EVLR
        Put(b, 0, 4); // EVLR count
        Put(b, points.size(), 8);
        b.append(120, '\0'); // counts by return
    }
    EXPECT_EQ(b.size(), headerSize);
    b.append(vlrBytes, '\x7f');
    for (const auto& p : points) {
        for (const std::int32_t v : p) {
            Put(b, static_cast<std::uint32_t>(v), 4);
        }
        b.append(recordLength - 12, '\x55');
    }
    return b;
}

TEST(LasReader, EveryVersionAndPointFormatAppliesScaleAndOffset) {
    const std::vector<std::array<std::int32_t, 3>> points = {
        {0, 0, 0}, {123456, -7, 2000}, {-2147483647 - 1, 2147483647, -1}};
    for (int minor = 0; minor <= 4; ++minor) {
        // Formats 6 to 10 came with LAS 1.4, which alone counts their points.
        for (int format = 0; format <= (minor == 4 ? 10 : 5); ++format) {
            const std::string las = Las(minor, format, points, format % 3, 54 * (format % 2));
            const std::vector<SFVec3f> s = Samples(&ReadLas, las);
            ASSERT_EQ(s.size(), points.size()) << minor << " " << format;
            for (std::size_t i = 0; i < points.size(); ++i) {
                EXPECT_EQ(s[i].x, points[i][0] * 0.01 + 1000.0);
                EXPECT_EQ(s[i].y, points[i][1] * 0.5 - 20.0);
                EXPECT_EQ(s[i].z, points[i][2] * 0.001 + 0.25);
            }
        }
    }
}

TEST(LasReader, BrokenFilesNameTheHeaderOrTheRecord) {
    const std::vector<std::array<std::int32_t, 3>> three = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    std::string cut = Las(2, 1, three);
    cut.resize(cut.size() - 5);
    EXPECT_EQ(Failure(&ReadLas, cut),
              "f: point record 3: the file ends inside it; the header promises 3 records of "
              "28 bytes");
    EXPECT_EQ(Failure(&ReadLas, Las(2, 1, three).substr(0, 200)),
              "f: header: the file ends inside the LAS header");
    std::string laz = Las(2, 1, three);
    laz[104] = static_cast<char>(0x81);
    EXPECT_NE(Failure(&ReadLas, laz).find("f: header: a LAZ (compressed LAS) file"),
              std::string::npos);
    std::string v2 = Las(2, 1, three);
    v2[24] = 2;
    EXPECT_EQ(Failure(&ReadLas, v2), "f: header: LAS version 2.2 is not read (1.0 to 1.4 are)");
    std::string f11 = Las(2, 1, three);
    f11[104] = 11;
    EXPECT_EQ(Failure(&ReadLas, f11), "f: header: point format 11 is not read (0 to 10 are)");
    std::string shortRecord = Las(2, 3, three);
    shortRecord[105] = 30;
    EXPECT_EQ(Failure(&ReadLas, shortRecord),
              "f: header: point records of 30 bytes, too short for point format 3");
    std::string zeroScale = Las(2, 0, three);
    std::memset(&zeroScale[139], 0, 8);
    EXPECT_EQ(Failure(&ReadLas, zeroScale),
              "f: header: the y scale factor or offset is zero or too large");
}

/// A vertex element of x (float), a colour byte, y (double), z (short) and a list, after a
/// face element of one list, in the given encoding.
std::string Ply(const std::string& format, const std::vector<std::array<int, 3>>& points) {
    std::string b = "ply\nformat " + format +
                    " 1.0\ncomment made by a test\nelement face 1\n"
                    "property list uchar int vertex_indices\nelement vertex " +
                    std::to_string(points.size()) +
                    "\nproperty float x\nproperty uchar red\nproperty double y\n"
                    "property short z\nproperty list uint8 float32 extra\nend_header\n";
    if (format == "ascii") {
        b += "3 0 1 2\n";
        for (const auto& p : points) {
            b += std::to_string(p[0] + 0.5) + " 255 " + std::to_string(p[1]) + " " +
                 std::to_string(p[2]) + " 2 0.5 1e3\n";
        }
        return b;
    }
    const bool big = format == "binary_big_endian";
    Put(b, 3, 1);
    for (int i = 0; i < 3; ++i) {
        Put(b, static_cast<std::uint32_t>(i), 4, big);
    }
    for (const auto& p : points) {
        float x = static_cast<float>(p[0]) + 0.5f;
        std::uint32_t xBits = 0;
        std::memcpy(&xBits, &x, sizeof x);
        Put(b, xBits, 4, big);
        Put(b, 255, 1);
        PutDouble(b, p[1], big);
        Put(b, static_cast<std::uint16_t>(p[2]), 2, big);
        Put(b, 1, 1);
        Put(b, 0, 4);
    }
    return b;
}

TEST(PlyReader, ThreeEncodingsGiveTheSameVertices) {
    const std::vector<std::array<int, 3>> points = {{1, 2, 3}, {-4, 5, -32768}, {7, -8, 32767}};
    for (const char* format : {"ascii", "binary_little_endian", "binary_big_endian"}) {
        const std::vector<SFVec3f> s = Samples(&ReadPly, Ply(format, points));
        ASSERT_EQ(s.size(), points.size()) << format;
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_EQ(s[i].x, points[i][0] + 0.5) << format;
            EXPECT_EQ(s[i].y, points[i][1]) << format;
            EXPECT_EQ(s[i].z, points[i][2]) << format;
        }
    }
}

TEST(PlyReader, BrokenFilesNameTheLineOrTheRecord) {
    const std::vector<std::array<int, 3>> points = {{1, 2, 3}, {4, 5, 6}};
    std::string cut = Ply("binary_little_endian", points);
    cut.resize(cut.size() - 3);
    EXPECT_EQ(Failure(&ReadPly, cut), "f: vertex record 2: the file ends inside it");
    std::string ascii = Ply("ascii", points);
    ascii.replace(ascii.find("4.500000"), 8, "4\x01");
    EXPECT_EQ(Failure(&ReadPly, ascii), "f:15: '4\\x01' is not a number");
    std::string noZ = Ply("ascii", points);
    noZ.replace(noZ.find("short z"), 7, "short w");
    EXPECT_EQ(Failure(&ReadPly, noZ), "f: header: the vertex element has no property z");
    EXPECT_EQ(Failure(&ReadPly, "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\n"),
              "f:4: the file ends inside the PLY header");
    std::string nan = Ply("binary_big_endian", points);
    // The first vertex's x, 20 bytes a record from the end, becomes a quiet NaN.
    std::memcpy(&nan[nan.size() - 2 * 20], "\x7f\xc0\0\0", 4);
    EXPECT_EQ(Failure(&ReadPly, nan), "f: vertex record 1: x is not a finite number");
}

TEST(TextReader, ColumnNamesPickTheColumns) {
    const std::vector<SFVec3f> csv =
        Samples(&ReadText, "id,\"Z\",X,class,y\r\n1,3,1,ground,2\r\n2,6,4,water,5\r\n");
    ASSERT_EQ(csv.size(), 2u);
    EXPECT_EQ(csv[1].x, 4.0);
    EXPECT_EQ(csv[1].y, 5.0);
    EXPECT_EQ(csv[1].z, 6.0);
    const std::vector<SFVec3f> named = Samples(&ReadText, "# survey\neast north height\n1 2 3\n");
    ASSERT_EQ(named.size(), 1u);
    EXPECT_EQ(named[0].z, 3.0);
    EXPECT_EQ(Failure(&ReadText, "a b c d\n1 2 3 4\n"),
              "f:1: the header names no column 'x' (a header names x, y and z, or exactly three "
              "columns)");
    EXPECT_EQ(Failure(&ReadText, "x y z q\n1 2 3\n"), "f:2: 3 fields where the header has 4");
    EXPECT_EQ(Failure(&ReadText, "1 2 \x1b[2J\n"), "f:1: '\\x1b[2J' is not a number");
    EXPECT_EQ(Failure(&ReadText, std::string(InputFile::kMaxLine + 10, '1')),
              "f:1: a line longer than 1 MiB");
}

TEST(TextReader, LinesAcrossTheReadBlocksOfAFile) {
    const std::string path = ::testing::TempDir() + "zqmath_text_reader.txt";
    std::FILE* out = std::fopen(path.c_str(), "wb");
    ASSERT_NE(out, nullptr);
    const int n = 400000; // about 9 MB: lines straddle the 4 MiB blocks
    for (int i = 0; i < n; ++i) {
        std::fprintf(out, "%d.25 %d %d\n", i, -i, 2 * i);
    }
    std::fclose(out);
    std::vector<SFVec3f> s;
    {
        InputFile in(path);
        s = ReadText(in, ProgressHook());
    }
    std::remove(path.c_str());
    ASSERT_EQ(s.size(), static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        ASSERT_EQ(s[i].x, i + 0.25);
        ASSERT_EQ(s[i].y, -i);
        ASSERT_EQ(s[i].z, 2 * i);
    }
}

} // namespace
