// input_file.cpp: the block buffer and its refills.
#include "input_file.h"

#include "terminal.h"
#include "tool_error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace zq::tool {
namespace {

constexpr std::size_t kBlock = 1 << 22;

} // namespace

InputFile::InputFile(const std::string& path) : m_name(path == "-" ? "<stdin>" : path) {
    if (path == "-") {
        m_file = stdin;
        SetBinary(stdin);
    } else {
        m_file = std::fopen(path.c_str(), "rb");
        if (m_file == nullptr) {
            throw ToolError(kStatusBadInput,
                            "zqmath: cannot open '" + path + "': " + std::strerror(errno));
        }
        m_owned = true;
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        m_size = error ? 0 : size;
    }
    m_buffer.resize(kBlock);
    m_data = m_buffer.data();
}

InputFile::InputFile(std::string name, std::string_view bytes)
    : m_name(std::move(name)), m_data(bytes.data()), m_end(bytes.size()), m_size(bytes.size()) {}

InputFile::~InputFile() {
    if (m_owned) {
        std::fclose(m_file);
    }
}

std::size_t InputFile::Fill(std::size_t n) {
    if (m_end - m_begin >= n || m_file == nullptr) {
        return m_end - m_begin;
    }
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    if (m_buffer.size() < n) {
        m_buffer.resize(std::max(n, 2 * m_buffer.size()));
    }
    m_data = m_buffer.data();
    while (m_end < n) {
        const std::size_t got =
            std::fread(m_buffer.data() + m_end, 1, m_buffer.size() - m_end, m_file);
        if (got == 0) {
            if (std::ferror(m_file)) {
                throw Failure("cannot read '" + m_name + "'");
            }
            break;
        }
        m_end += got;
    }
    return m_end;
}

std::string_view InputFile::Consume(std::size_t n) {
    const std::string_view bytes(m_data + m_begin, n);
    m_begin += n;
    m_position += n;
    return bytes;
}

std::string_view InputFile::Peek(std::size_t n) {
    return std::string_view(m_data + m_begin, std::min(n, Fill(n)));
}

std::string_view InputFile::Take(std::size_t n) {
    return Consume(std::min(n, Fill(n)));
}

bool InputFile::Skip(std::uint64_t n) {
    while (n > 0) {
        const std::size_t step = static_cast<std::size_t>(std::min<std::uint64_t>(n, kBlock));
        const std::size_t got = Take(step).size();
        if (got < step) {
            return false;
        }
        n -= got;
    }
    return true;
}

bool InputFile::NextLine(std::string_view& line) {
    std::size_t searched = 0;
    for (;;) {
        const std::size_t available = m_end - m_begin;
        const char* start = m_data + m_begin;
        const void* newline = std::memchr(start + searched, '\n', available - searched);
        if (newline != nullptr) {
            const std::size_t length = static_cast<const char*>(newline) - start;
            line = Consume(length + 1).substr(0, length);
            return true;
        }
        if (available > kMaxLine) {
            line = Consume(kMaxLine + 1);
            return true;
        }
        searched = available;
        if (Fill(available + kBlock) == available) {
            line = Consume(available);
            return available > 0;
        }
    }
}

} // namespace zq::tool
