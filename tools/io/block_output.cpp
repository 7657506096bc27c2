// block_output.cpp: std::to_chars into the block, fwrite when it fills up.
#include "block_output.h"

#include <charconv>
#include <cstring>

namespace zq::tool {
namespace {

constexpr std::size_t kBlock = 1 << 22;
/// Room enough for any one number.
constexpr std::size_t kNumber = 32;

} // namespace

BlockOutput::BlockOutput(std::FILE* out) : m_out(out), m_block(kBlock) {}

BlockOutput::~BlockOutput() {
    Flush();
}

char* BlockOutput::Room(std::size_t n) {
    if (m_block.size() - m_used < n) {
        Flush();
        if (m_block.size() < n) {
            m_block.resize(n);
        }
    }
    return m_block.data() + m_used;
}

void BlockOutput::Flush() {
    if (m_used > 0) {
        std::fwrite(m_block.data(), 1, m_used, m_out);
        m_used = 0;
    }
}

void BlockOutput::Put(std::string_view text) {
    std::memcpy(Room(text.size()), text.data(), text.size());
    m_used += text.size();
}

void BlockOutput::PutNumber(double v) {
    char* at = Room(kNumber);
    m_used = static_cast<std::size_t>(std::to_chars(at, at + kNumber, v).ptr - m_block.data());
}

void BlockOutput::PutUnsigned(std::uint64_t v) {
    char* at = Room(kNumber);
    m_used = static_cast<std::size_t>(std::to_chars(at, at + kNumber, v).ptr - m_block.data());
}

void BlockOutput::PutLittleEndian(std::uint32_t v) {
    char* at = Room(4);
    for (int i = 0; i < 4; ++i) {
        at[i] = static_cast<char>(v >> (8 * i));
    }
    m_used += 4;
}

void BlockOutput::PutLittleEndian(double v) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    char* at = Room(8);
    for (int i = 0; i < 8; ++i) {
        at[i] = static_cast<char>(bits >> (8 * i));
    }
    m_used += 8;
}

} // namespace zq::tool
