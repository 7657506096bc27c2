// libFuzzer target: the PLY reader over arbitrary bytes.
#include "ply_reader.h"
#include "reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return FuzzReader(data, size, &zq::tool::ReadPly);
}
