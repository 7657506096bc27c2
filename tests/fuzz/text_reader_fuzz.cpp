// libFuzzer target: the text reader over arbitrary bytes.
#include "reader_fuzz.h"
#include "text_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return FuzzReader(data, size, &zq::tool::ReadText);
}
