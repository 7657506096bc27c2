// output_file.h: a file that appears under its name only once it is complete.
#ifndef ZQMATH_TOOLS_OUTPUT_FILE_H
#define ZQMATH_TOOLS_OUTPUT_FILE_H

#include <cstdio>
#include <string>

namespace zq::tool {

/// Written as PATH.tmp (binary, so the bytes are the same on every platform) and renamed to
/// PATH by Commit; a file that is never committed is removed. Failures throw Failure.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// The stream to write to, until Commit.
    std::FILE* Stream() const { return m_stream; }
    /// Closes the temporary file and renames it over PATH.
    void Commit();

private:
    std::string m_path;
    std::string m_temporary;
    std::FILE* m_stream;
};

} // namespace zq::tool

#endif
