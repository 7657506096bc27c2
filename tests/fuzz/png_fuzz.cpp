// libFuzzer target: the PNG reader over libpng. Every input must give a raster of the size
// it claims or fail with the tool's input error; anything else is a finding.
#include "../../tools/io/png_reader.h"
#include "../../tools/tool_error.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    try {
        const zq::tool::Raster r =
            zq::tool::ReadPng("fuzz.png", zq::tool::MemorySource(data, size), size);
        if (r.pixels.size() != r.width * r.height || r.maximum != 65535) {
            std::abort();
        }
    } catch (const zq::tool::ToolError& e) {
        if (e.Status() != zq::tool::kStatusBadInput) {
            std::abort();
        }
    }
    return 0;
}
