// block_output.h: bytes gathered in a large block before they reach the stream.
#ifndef ZQMATH_TOOLS_IO_BLOCK_OUTPUT_H
#define ZQMATH_TOOLS_IO_BLOCK_OUTPUT_H

#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace zq::tool {

/// A buffer of a few megabytes in front of a stream: numbers are formatted straight into it
/// and it is written in one call when full. Flush (or the destructor) writes the rest.
class BlockOutput {
public:
    explicit BlockOutput(std::FILE* out);
    BlockOutput(const BlockOutput&) = delete;
    BlockOutput& operator=(const BlockOutput&) = delete;
    ~BlockOutput();

    void Put(std::string_view text);
    void Put(char c) { Room(1)[0] = c, ++m_used; }
    /// The shortest text that reads back as v exactly.
    void PutNumber(double v);
    void PutUnsigned(std::uint64_t v);
    /// The bytes of v, least significant first, whatever the host's byte order.
    void PutLittleEndian(std::uint32_t v);
    void PutLittleEndian(double v);
    void Flush();

private:
    /// At least n free bytes at the end of the block.
    char* Room(std::size_t n);

    std::FILE* m_out;
    std::vector<char> m_block;
    std::size_t m_used = 0;
};

} // namespace zq::tool

#endif
