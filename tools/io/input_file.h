// input_file.h: the bytes of an input, read a large block at a time.
#ifndef ZQMATH_TOOLS_IO_INPUT_FILE_H
#define ZQMATH_TOOLS_IO_INPUT_FILE_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace zq::tool {

/// A file, standard input or bytes in memory, consumed from the front through a block buffer,
/// so that a reader never holds more of a large file than one block (or one line).
class InputFile {
public:
    /// Lines longer than this are not read whole (see NextLine).
    static constexpr std::size_t kMaxLine = 1 << 20;

    /// The file at path, or standard input for "-". Throws a status-2 ToolError when the file
    /// cannot be opened.
    explicit InputFile(const std::string& path);
    /// Bytes in memory (not copied), called name in messages.
    InputFile(std::string name, std::string_view bytes);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    /// The name for messages: the path, or "<stdin>".
    const std::string& Name() const { return m_name; }
    /// The size in bytes when known in advance (a regular file, bytes in memory), else 0.
    std::uint64_t Size() const { return m_size; }
    /// The bytes consumed so far.
    std::uint64_t Position() const { return m_position; }

    /// Up to n of the next bytes, not consumed: fewer only at the end of the input.
    std::string_view Peek(std::size_t n);
    /// The next n bytes, consumed: fewer only at the end of the input. Valid until the next call.
    std::string_view Take(std::size_t n);
    /// Consumes n bytes; false when the input ends first.
    bool Skip(std::uint64_t n);
    /// The next line without its '\n', consumed; false at the end of the input. A line longer
    /// than kMaxLine comes back as its first kMaxLine + 1 bytes, and the caller must stop.
    bool NextLine(std::string_view& line);

private:
    /// Makes at least n bytes available when the input holds them; returns how many are.
    std::size_t Fill(std::size_t n);
    std::string_view Consume(std::size_t n);

    std::string m_name;
    std::FILE* m_file = nullptr;
    bool m_owned = false;
    std::vector<char> m_buffer;
    const char* m_data = nullptr;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
};

} // namespace zq::tool

#endif
