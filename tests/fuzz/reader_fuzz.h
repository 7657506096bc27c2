// reader_fuzz.h: the body shared by the reader fuzz targets.
#ifndef ZQMATH_TESTS_FUZZ_READER_FUZZ_H
#define ZQMATH_TESTS_FUZZ_READER_FUZZ_H

#include "input_file.h"
#include "progress.h"
#include "tool_error.h"

#include <sfvec3f.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Runs read over the bytes: it must return finite samples or throw a status-2 ToolError whose
/// message is printable; anything else (a crash, a sanitizer report, another exception, a
/// non-finite sample) is a finding.
template <typename Read>
int FuzzReader(const std::uint8_t* data, std::size_t size, Read read) {
    zq::tool::InputFile in("fuzz", std::string_view(reinterpret_cast<const char*>(data), size));
    try {
        for (const SFVec3f& p : read(in, zq::tool::ProgressHook())) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
                std::abort();
            }
        }
    } catch (const zq::tool::ToolError& e) {
        if (e.Status() != zq::tool::kStatusBadInput) {
            std::abort();
        }
        for (const char c : std::string_view(e.what())) {
            if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) >= 0x7f) {
                std::abort();
            }
        }
    }
    return 0;
}

#endif
