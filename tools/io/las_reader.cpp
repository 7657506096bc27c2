// las_reader.cpp: the public header block, then the coordinates of each point record.
#include "las_reader.h"

#include "large_pages.h"
#include "tool_error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zq::tool {
namespace {

/// Header bytes up to and including the legacy point count, scale, offset and extent (LAS 1.0).
constexpr std::size_t kHeader10 = 227;
/// Header bytes up to and including the 64-bit point count (LAS 1.4).
constexpr std::size_t kHeader14 = 255;
/// Bytes each point format needs at least; all begin with X, Y, Z as 32-bit integers.
constexpr unsigned kRecordBytes[] = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
/// Points read between two progress reports.
constexpr std::size_t kBlockRecords = 1 << 16;

/// The little-endian unsigned integer of n bytes at p.
std::uint64_t Unsigned(const char* p, int n) {
    std::uint64_t v = 0;
    for (int i = n - 1; i >= 0; --i) {
        v = (v << 8) | static_cast<unsigned char>(p[i]);
    }
    return v;
}

std::int32_t Int32(const char* p) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(Unsigned(p, 4)));
}

double Double(const char* p) {
    const std::uint64_t bits = Unsigned(p, 8);
    double d = 0.0;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

/// What the reader takes from the public header block.
struct LasHeader {
    std::uint64_t pointOffset = 0;
    std::uint64_t count = 0;
    unsigned recordLength = 0;
    double scale[3] = {1.0, 1.0, 1.0};
    double offset[3] = {0.0, 0.0, 0.0};
};

LasHeader ReadHeader(InputFile& in) {
    const std::string& name = in.Name();
    const std::string_view h = in.Take(kHeader10);
    if (h.size() < kHeader10) {
        throw InputError(name, "header", "the file ends inside the LAS header");
    }
    const unsigned major = static_cast<unsigned char>(h[24]);
    const unsigned minor = static_cast<unsigned char>(h[25]);
    const std::string version = std::to_string(major) + "." + std::to_string(minor);
    if (major != 1 || minor > 4) {
        throw InputError(name, "header",
                         "LAS version " + version + " is not read (1.0 to 1.4 are)");
    }
    const unsigned format = static_cast<unsigned char>(h[104]);
    // The top two bits of the format mark compressed points (LAZ).
    if ((format & 0xC0) != 0) {
        throw InputError(name, "header",
                         "a LAZ (compressed LAS) file; decompress it to LAS first, for example "
                         "with 'laszip -i IN.laz -o OUT.las' or 'pdal translate IN.laz OUT.las'");
    }
    if (format > 10) {
        throw InputError(name, "header",
                         "point format " + std::to_string(format) + " is not read (0 to 10 are)");
    }
    LasHeader header;
    const unsigned headerSize = static_cast<unsigned>(Unsigned(&h[94], 2));
    header.pointOffset = Unsigned(&h[96], 4);
    header.recordLength = static_cast<unsigned>(Unsigned(&h[105], 2));
    header.count = Unsigned(&h[107], 4);
    if (header.recordLength < kRecordBytes[format]) {
        throw InputError(name, "header",
                         "point records of " + std::to_string(header.recordLength) +
                             " bytes, too short for point format " + std::to_string(format));
    }
    const char* const axes = "xyz";
    for (int axis = 0; axis < 3; ++axis) {
        header.scale[axis] = Double(&h[131 + 8 * axis]);
        header.offset[axis] = Double(&h[155 + 8 * axis]);
        // Every record's coordinate is then finite.
        if (!std::isfinite(std::ldexp(std::fabs(header.scale[axis]), 31) +
                           std::fabs(header.offset[axis])) ||
            header.scale[axis] == 0.0) {
            throw InputError(name, "header",
                             std::string("the ") + axes[axis] +
                                 " scale factor or offset is zero or too large");
        }
    }
    std::size_t read = kHeader10;
    if (minor >= 4) {
        // LAS 1.4 keeps a 64-bit count; the legacy one is 0 when the count does not fit.
        const std::string_view rest = in.Take(kHeader14 - kHeader10);
        read = kHeader14;
        if (rest.size() < kHeader14 - kHeader10 || headerSize < kHeader14) {
            throw InputError(name, "header", "the LAS " + version + " header is cut short");
        }
        const std::uint64_t count = Unsigned(&rest[247 - kHeader10], 8);
        if (count != 0) {
            header.count = count;
        }
    }
    if (headerSize < kHeader10 || header.pointOffset < headerSize) {
        throw InputError(name, "header",
                         "a header of " + std::to_string(headerSize) + " bytes with points at " +
                             std::to_string(header.pointOffset));
    }
    if (header.count == 0) {
        throw InputError(name, "header", "no point records");
    }
    if (!in.Skip(header.pointOffset - read)) {
        throw InputError(name, "header", "the point data would start past the end of the file");
    }
    return header;
}

/// The place of record i (from 0) in messages.
std::string Record(std::uint64_t i) {
    return "point record " + std::to_string(i + 1);
}

} // namespace

bool IsLas(std::string_view bytes) {
    return bytes.substr(0, 4) == "LASF";
}

std::vector<SFVec3f> ReadLas(InputFile& in, const ProgressHook& progress) {
    const LasHeader h = ReadHeader(in);
    const std::uint64_t available = in.Size() > h.pointOffset ? in.Size() - h.pointOffset : 0;
    if (in.Size() != 0 && available / h.recordLength < h.count) {
        throw InputError(in.Name(), Record(available / h.recordLength),
                         "the file ends inside it; the header promises " + std::to_string(h.count) +
                             " records of " + std::to_string(h.recordLength) + " bytes");
    }
    std::vector<SFVec3f> samples;
    ReserveLarge(samples,
                 static_cast<std::size_t>(
                     in.Size() != 0 ? h.count : std::min<std::uint64_t>(h.count, kBlockRecords)));
    for (std::uint64_t first = 0; first < h.count; first += kBlockRecords) {
        const std::size_t n =
            static_cast<std::size_t>(std::min<std::uint64_t>(kBlockRecords, h.count - first));
        const std::string_view block = in.Take(n * h.recordLength);
        if (block.size() < n * h.recordLength) {
            throw InputError(in.Name(), Record(first + block.size() / h.recordLength),
                             "the file ends inside it");
        }
        for (std::size_t i = 0; i < n; ++i) {
            const char* record = &block[i * h.recordLength];
            samples.emplace_back(Int32(record) * h.scale[0] + h.offset[0],
                                 Int32(record + 4) * h.scale[1] + h.offset[1],
                                 Int32(record + 8) * h.scale[2] + h.offset[2]);
        }
        if (progress) {
            progress(static_cast<std::size_t>(first + n), static_cast<std::size_t>(h.count));
        }
    }
    return samples;
}

} // namespace zq::tool
