// libFuzzer target: the PGM reader. Every input must give a raster whose values lie within
// its maximum or fail with the tool's input error; anything else is a finding.
#include "../../tools/io/pgm_reader.h"
#include "../../tools/tool_error.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    try {
        const zq::tool::Raster r = zq::tool::ReadPgm("fuzz.pgm", data, size);
        if (r.pixels.size() != r.width * r.height) {
            std::abort();
        }
        for (std::uint16_t v : r.pixels) {
            if (v > r.maximum) {
                std::abort();
            }
        }
    } catch (const zq::tool::ToolError& e) {
        if (e.Status() != zq::tool::kStatusBadInput) {
            std::abort();
        }
    }
    return 0;
}
