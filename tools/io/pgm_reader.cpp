// pgm_reader.cpp: the header's numbers between blanks and comments, then the raster.
#include "pgm_reader.h"

#include "../tool_error.h"

namespace zq::tool {
namespace {

/// Reads the numbers of a PGM file, counting lines for the messages.
class PgmScanner {
public:
    PgmScanner(const std::string& name, const unsigned char* data, std::size_t size)
        : m_name(name), m_data(data), m_size(size) {}

    [[noreturn]] void Fail(const std::string& what) const {
        throw InputError(m_name, m_line, what);
    }

    /// Skips the magic number, already checked.
    void SkipMagic() { m_at = 2; }

    /// The next decimal number after blanks and comments, at most limit; what names it.
    std::uint32_t Number(const char* what, std::uint32_t limit) {
        SkipBlanks();
        if (m_at == m_size) {
            Fail(std::string("the file ends where the ") + what + " was expected");
        }
        if (!IsDigit(m_data[m_at])) {
            Fail(std::string("'") + static_cast<char>(m_data[m_at]) + "' where the " + what +
                 " was expected");
        }
        std::uint64_t value = 0;
        while (m_at < m_size && IsDigit(m_data[m_at])) {
            value = value * 10 + (m_data[m_at++] - '0');
            if (value > limit) {
                Fail(std::string("the ") + what + " is above " + std::to_string(limit));
            }
        }
        return static_cast<std::uint32_t>(value);
    }

    /// Steps over the single blank that ends a raw file's header.
    void EndRawHeader() {
        if (m_at == m_size || !IsBlank(m_data[m_at])) {
            Fail("no blank after the maximum value");
        }
        m_line += m_data[m_at] == '\n';
        ++m_at;
    }

    /// The raw raster's bytes left, and where they start.
    std::size_t Left() const { return m_size - m_at; }
    const unsigned char* Here() const { return m_data + m_at; }

private:
    static bool IsDigit(unsigned char c) { return c >= '0' && c <= '9'; }
    static bool IsBlank(unsigned char c) {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
    }

    void SkipBlanks() {
        while (m_at < m_size && (IsBlank(m_data[m_at]) || m_data[m_at] == '#')) {
            if (m_data[m_at] == '#') {
                while (m_at < m_size && m_data[m_at] != '\n') {
                    ++m_at;
                }
                continue;
            }
            m_line += m_data[m_at] == '\n';
            ++m_at;
        }
    }

    const std::string& m_name;
    const unsigned char* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
    std::size_t m_line = 1;
};

void ReadPlainPixels(PgmScanner& in, Raster& raster) {
    for (std::uint16_t& pixel : raster.pixels) {
        pixel = static_cast<std::uint16_t>(in.Number("pixel value", raster.maximum));
    }
}

void ReadRawPixels(PgmScanner& in, Raster& raster) {
    const std::size_t bytes = raster.maximum < 256 ? 1 : 2;
    if (in.Left() < raster.pixels.size() * bytes) {
        in.Fail("the raster ends after " + std::to_string(in.Left() / bytes) + " of " +
                std::to_string(raster.pixels.size()) + " pixels");
    }
    const unsigned char* at = in.Here();
    for (std::size_t i = 0; i < raster.pixels.size(); ++i, at += bytes) {
        const unsigned value = bytes == 1 ? at[0] : (at[0] << 8 | at[1]);
        if (value > raster.maximum) {
            in.Fail("pixel " + std::to_string(i) + " is " + std::to_string(value) +
                    ", above the maximum value " + std::to_string(raster.maximum));
        }
        raster.pixels[i] = static_cast<std::uint16_t>(value);
    }
}

} // namespace

bool LooksLikePgm(const unsigned char* data, std::size_t size) {
    return size >= 2 && data[0] == 'P' && (data[1] == '2' || data[1] == '5');
}

Raster ReadPgm(const std::string& name, const unsigned char* data, std::size_t size) {
    PgmScanner in(name, data, size);
    if (!LooksLikePgm(data, size)) {
        in.Fail("not a PGM file (it must start with P2 or P5)");
    }
    const bool raw = data[1] == '5';
    in.SkipMagic();
    Raster raster;
    raster.width = in.Number("width", kMaxRasterSide);
    raster.height = in.Number("height", kMaxRasterSide);
    raster.maximum = in.Number("maximum value", 65535);
    if (raster.width == 0 || raster.height == 0 || raster.maximum == 0) {
        in.Fail("the width, height and maximum value must not be 0");
    }
    const std::size_t count = raster.width * raster.height;
    // Each pixel needs at least one byte: a shorter file is truncated, whatever it claims.
    if (count > kMaxRasterPixels || count > size) {
        in.Fail(std::to_string(raster.width) + " x " + std::to_string(raster.height) +
                " pixels cannot be in a file of " + std::to_string(size) + " bytes");
    }
    raster.pixels.resize(count);
    if (raw) {
        in.EndRawHeader();
        ReadRawPixels(in, raster);
    } else {
        ReadPlainPixels(in, raster);
    }
    return raster;
}

} // namespace zq::tool
