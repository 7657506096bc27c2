// output_file.cpp: the temporary file, its rename and the number format of the text writers.
#include "output_file.h"

#include "tool_error.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace zq::tool {

OutputFile::OutputFile(const std::string& path)
    : m_path(path), m_temporary(path + ".tmp"), m_stream(std::fopen(m_temporary.c_str(), "wb")) {
    if (m_stream == nullptr) {
        throw Failure("cannot write '" + m_temporary + "': " + std::strerror(errno));
    }
}

OutputFile::~OutputFile() {
    if (m_stream != nullptr) {
        std::fclose(m_stream);
        std::remove(m_temporary.c_str());
    }
}

void OutputFile::Commit() {
    const bool written = std::ferror(m_stream) == 0;
    const bool closed = std::fclose(m_stream) == 0;
    m_stream = nullptr;
    if (!written || !closed) {
        std::remove(m_temporary.c_str());
        throw Failure("cannot write '" + m_temporary + "'");
    }
    // Replaces an existing PATH, on Windows too (where std::rename would fail).
    std::error_code error;
    std::filesystem::rename(m_temporary, m_path, error);
    if (error) {
        std::remove(m_temporary.c_str());
        throw Failure("cannot rename '" + m_temporary + "' to '" + m_path +
                      "': " + error.message());
    }
}

void PutNumber(std::FILE* out, double v) {
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, v);
    std::fwrite(text, 1, static_cast<std::size_t>(result.ptr - text), out);
}

} // namespace zq::tool
