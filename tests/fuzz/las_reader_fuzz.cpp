// libFuzzer target: the LAS reader over arbitrary bytes.
#include "las_reader.h"
#include "reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return FuzzReader(data, size, &zq::tool::ReadLas);
}
