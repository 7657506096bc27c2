// text_reader.cpp: fields split on blanks and commas, the header line, the numbers.
#include "text_reader.h"

#include "large_pages.h"
#include "number_text.h"
#include "tool_error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

namespace zq::tool {
namespace {

/// Progress is told after this many lines.
constexpr std::size_t kProgressLines = 1 << 16;

/// Lines a text input is guessed to have per byte, to reserve the samples at once: a guess
/// too small only costs the array's growth, one too large only address space never touched.
constexpr std::uint64_t kBytesPerLine = 16;

/// What a byte is to the field splitter.
enum ByteClass : unsigned char { kField, kSeparator, kComment };

/// The class of every byte: blanks and commas separate fields, '#' ends the line's content.
constexpr std::array<ByteClass, 256> ByteClasses() {
    std::array<ByteClass, 256> classes{};
    for (const unsigned char c : {' ', '\t', ',', '\r', '\v', '\f'}) {
        classes[c] = kSeparator;
    }
    classes['#'] = kComment;
    return classes;
}
constexpr std::array<ByteClass, 256> kClasses = ByteClasses();

ByteClass ClassOf(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

/// The fields of a line, up to its comment, as views into it.
class Fields {
public:
    explicit Fields(std::string_view line) : m_at(line.data()), m_end(line.data() + line.size()) {}
    /// The next field; false when there is none.
    bool Next(std::string_view& field) {
        while (m_at != m_end && ClassOf(*m_at) == kSeparator) {
            ++m_at;
        }
        if (m_at == m_end || ClassOf(*m_at) == kComment) {
            return false;
        }
        const char* start = m_at;
        while (m_at != m_end && ClassOf(*m_at) == kField) {
            ++m_at;
        }
        field = std::string_view(start, static_cast<std::size_t>(m_at - start));
        return true;
    }

private:
    const char* m_at;
    const char* m_end;
};

/// Which fields of a line hold x, y and z, and how many fields a line has.
struct Columns {
    std::array<std::size_t, 3> xyz{0, 1, 2};
    std::size_t count = 3;
    bool named = false;
};

/// The name without surrounding double quotes, in lower case.
std::string ColumnName(std::string_view field) {
    if (field.size() >= 2 && field.front() == '"' && field.back() == '"') {
        field = field.substr(1, field.size() - 2);
    }
    std::string name(field);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

/// True, with columns set, when no field of the line is a number: it is a header.
bool ReadHeader(std::string_view line, const std::string& source, std::size_t number,
                Columns& columns) {
    std::vector<std::string> names;
    Fields fields(line);
    std::string_view field;
    while (fields.Next(field)) {
        double value = 0.0;
        if (ParseNumber(field, value) == nullptr) {
            return false;
        }
        names.push_back(ColumnName(field));
    }
    columns.count = names.size();
    columns.named = true;
    const char* const wanted[] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis) {
        const auto at = std::find(names.begin(), names.end(), wanted[axis]);
        if (at != names.end()) {
            columns.xyz[axis] = static_cast<std::size_t>(at - names.begin());
        } else if (names.size() != 3) {
            throw InputError(source, number,
                             "the header names no column '" + std::string(wanted[axis]) +
                                 "' (a header names x, y and z, or exactly three columns)");
        }
    }
    return true;
}

/// The number a whole field spells; throws InputError otherwise.
double FieldNumber(std::string_view field, const std::string& source, std::size_t line) {
    double value = 0.0;
    if (const char* problem = ParseNumber(field, value)) {
        throw InputError(source, line, "'" + Printable(field) + "' " + problem);
    }
    return value;
}

/// Appends the sample of one line, if it holds fields.
void ReadLine(std::string_view line, const Columns& columns, const std::string& source,
              std::size_t number, std::vector<SFVec3f>& samples) {
    double xyz[3] = {0.0, 0.0, 0.0};
    std::size_t count = 0;
    Fields fields(line);
    std::string_view field;
    while (fields.Next(field)) {
        for (int axis = 0; axis < 3; ++axis) {
            if (columns.xyz[axis] == count) {
                xyz[axis] = FieldNumber(field, source, number);
            }
        }
        ++count;
    }
    if (count == 0) {
        return;
    }
    if (count != columns.count) {
        const std::string found = std::to_string(count) + (count == 1 ? " field" : " fields");
        throw InputError(source, number,
                         columns.named
                             ? found + " where the header has " + std::to_string(columns.count)
                             : found + " where x y z was expected");
    }
    samples.emplace_back(xyz[0], xyz[1], xyz[2]);
}

} // namespace

std::vector<SFVec3f> ReadText(InputFile& in, const ProgressHook& progress) {
    std::vector<SFVec3f> samples;
    ReserveLarge(samples, static_cast<std::size_t>(std::min<std::uint64_t>(
                              in.Size() / kBytesPerLine, samples.max_size() / 2)));
    Columns columns;
    bool first = true;
    std::size_t number = 0;
    std::string_view line;
    while (in.NextLine(line)) {
        ++number;
        if (line.size() > InputFile::kMaxLine) {
            throw InputError(in.Name(), number, "a line longer than 1 MiB");
        }
        if (first) {
            std::string_view field;
            if (!Fields(line).Next(field)) {
                continue;
            }
            first = false;
            if (ReadHeader(line, in.Name(), number, columns)) {
                continue;
            }
        }
        ReadLine(line, columns, in.Name(), number, samples);
        if (progress && number % kProgressLines == 0) {
            progress(in.Position(), in.Size());
        }
    }
    if (samples.empty()) {
        throw InputError(in.Name(), std::max<std::size_t>(number, 1), "no samples in the input");
    }
    if (progress) {
        progress(in.Size(), in.Size());
    }
    return samples;
}

} // namespace zq::tool
