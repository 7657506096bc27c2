// output_file.cpp: the temporary file and its rename.
#include "output_file.h"

#include "tool_error.h"

#include <cerrno>
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

} // namespace zq::tool
