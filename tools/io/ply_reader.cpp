// ply_reader.cpp: the header's elements and properties, then the vertex records.
#include "ply_reader.h"

#include "large_pages.h"
#include "number_text.h"
#include "tool_error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace zq::tool {
namespace {

enum class Encoding { kAscii, kLittle, kBig };
enum class Type { kInt8, kUint8, kInt16, kUint16, kInt32, kUint32, kFloat32, kFloat64 };

/// A property: one value of type, or a list of values of type after a count of countType.
struct Property {
    std::string name;
    Type type = Type::kFloat64;
    bool list = false;
    Type countType = Type::kUint8;
};

struct Element {
    std::string name;
    std::uint64_t count = 0;
    std::vector<Property> properties;
};

struct Header {
    Encoding encoding = Encoding::kAscii;
    std::vector<Element> elements;
    std::size_t lines = 0;
};

/// Records read between two progress reports.
constexpr std::size_t kBlockRecords = 1 << 16;

bool TypeOf(std::string_view name, Type& type) {
    static const struct {
        const char* name;
        Type type;
    } kTypes[] = {
        {"char", Type::kInt8},      {"int8", Type::kInt8},       {"uchar", Type::kUint8},
        {"uint8", Type::kUint8},    {"short", Type::kInt16},     {"int16", Type::kInt16},
        {"ushort", Type::kUint16},  {"uint16", Type::kUint16},   {"int", Type::kInt32},
        {"int32", Type::kInt32},    {"uint", Type::kUint32},     {"uint32", Type::kUint32},
        {"float", Type::kFloat32},  {"float32", Type::kFloat32}, {"double", Type::kFloat64},
        {"float64", Type::kFloat64}};
    for (const auto& t : kTypes) {
        if (name == t.name) {
            type = t.type;
            return true;
        }
    }
    return false;
}

std::size_t SizeOf(Type type) {
    static const std::size_t kSizes[] = {1, 1, 2, 2, 4, 4, 4, 8};
    return kSizes[static_cast<int>(type)];
}

/// The words of a header line.
std::vector<std::string_view> Words(std::string_view line) {
    std::vector<std::string_view> words;
    std::size_t at = 0;
    while (at < line.size()) {
        const std::size_t start = line.find_first_not_of(" \t\r", at);
        if (start == std::string_view::npos) {
            break;
        }
        at = std::min(line.find_first_of(" \t\r", start), line.size());
        words.push_back(line.substr(start, at - start));
    }
    return words;
}

void ReadProperty(const std::vector<std::string_view>& w, Header& h, const std::string& name) {
    const auto bad = [&](const std::string& what) { return InputError(name, h.lines, what); };
    if (h.elements.empty()) {
        throw bad("a property before any element");
    }
    Property p;
    const bool list = w.size() == 5 && w[1] == "list";
    if (!(w.size() == 3 || list) ||
        (list ? !TypeOf(w[2], p.countType) || !TypeOf(w[3], p.type) : !TypeOf(w[1], p.type))) {
        throw bad("'" + Printable(std::string(w.size() > 1 ? w[1] : "")) +
                  "': a property is 'property TYPE NAME' or 'property list TYPE TYPE NAME'");
    }
    p.list = list;
    p.name = std::string(w.back());
    h.elements.back().properties.push_back(p);
}

Header ReadHeader(InputFile& in) {
    const std::string& name = in.Name();
    Header h;
    std::string_view line;
    bool formatSeen = false;
    while (in.NextLine(line)) {
        ++h.lines;
        const auto bad = [&](const std::string& what) { return InputError(name, h.lines, what); };
        if (line.size() > InputFile::kMaxLine) {
            throw bad("a header line longer than 1 MiB");
        }
        const std::vector<std::string_view> w = Words(line);
        if (h.lines == 1) {
            if (w.size() != 1 || w[0] != "ply") {
                throw bad("a PLY file starts with the line 'ply'");
            }
        } else if (w.empty() || w[0] == "comment" || w[0] == "obj_info") {
            continue;
        } else if (w[0] == "format") {
            if (w.size() != 3 || w[2] != "1.0" || formatSeen) {
                throw bad(
                    "the format line is 'format ascii|binary_little_endian|binary_big_endian 1.0'");
            }
            formatSeen = true;
            if (w[1] == "ascii") {
                h.encoding = Encoding::kAscii;
            } else if (w[1] == "binary_little_endian") {
                h.encoding = Encoding::kLittle;
            } else if (w[1] == "binary_big_endian") {
                h.encoding = Encoding::kBig;
            } else {
                throw bad("unknown PLY format '" + Printable(std::string(w[1])) + "'");
            }
        } else if (w[0] == "element") {
            Element e;
            double count = -1.0;
            if (w.size() != 3 || ParseNumber(w[2], count) != nullptr || count < 0.0 ||
                count != std::floor(count) || count > 1e18) {
                throw bad("an element is 'element NAME COUNT'");
            }
            e.name = std::string(w[1]);
            e.count = static_cast<std::uint64_t>(count);
            h.elements.push_back(e);
        } else if (w[0] == "property") {
            ReadProperty(w, h, name);
        } else if (w[0] == "end_header") {
            if (!formatSeen) {
                throw bad("the header ends without a format line");
            }
            return h;
        } else {
            throw bad("'" + Printable(std::string(w[0])) + "' is not a PLY header keyword");
        }
    }
    throw InputError(name, h.lines, "the file ends inside the PLY header");
}

/// Where x, y and z are among the properties of the vertex element.
struct VertexLayout {
    int xyz[3] = {-1, -1, -1};
};

VertexLayout Layout(const Element& vertex, const std::string& name) {
    VertexLayout layout;
    const char* const axes[] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis) {
        for (std::size_t i = 0; i < vertex.properties.size(); ++i) {
            if (vertex.properties[i].name == axes[axis] && !vertex.properties[i].list) {
                layout.xyz[axis] = static_cast<int>(i);
            }
        }
        if (layout.xyz[axis] < 0) {
            throw InputError(name, "header",
                             std::string("the vertex element has no property ") + axes[axis]);
        }
    }
    return layout;
}

/// The value of type at p in the given byte order.
double Decode(const char* p, Type type, Encoding encoding) {
    const std::size_t size = SizeOf(type);
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t at = encoding == Encoding::kBig ? i : size - 1 - i;
        bits = (bits << 8) | static_cast<unsigned char>(p[at]);
    }
    switch (type) {
    case Type::kInt8:
        return static_cast<std::int8_t>(bits);
    case Type::kUint8:
    case Type::kUint16:
    case Type::kUint32:
        return static_cast<double>(bits);
    case Type::kInt16:
        return static_cast<std::int16_t>(bits);
    case Type::kInt32:
        return static_cast<std::int32_t>(bits);
    case Type::kFloat32: {
        const auto b32 = static_cast<std::uint32_t>(bits);
        float f = 0.0f;
        std::memcpy(&f, &b32, sizeof f);
        return f;
    }
    case Type::kFloat64:
        break;
    }
    double d = 0.0;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

/// Reads one record of element e from a binary body; values[i] gets scalar property i.
/// Returns false when the input ends inside it.
bool ReadBinaryRecord(InputFile& in, const Element& e, Encoding encoding, double* values) {
    for (std::size_t i = 0; i < e.properties.size(); ++i) {
        const Property& p = e.properties[i];
        if (!p.list) {
            const std::string_view bytes = in.Take(SizeOf(p.type));
            if (bytes.size() < SizeOf(p.type)) {
                return false;
            }
            if (values != nullptr) {
                values[i] = Decode(bytes.data(), p.type, encoding);
            }
            continue;
        }
        const std::string_view count = in.Take(SizeOf(p.countType));
        if (count.size() < SizeOf(p.countType)) {
            return false;
        }
        // A count stored as a float can hold anything: past 2^32 items no file is that long.
        const double n = Decode(count.data(), p.countType, encoding);
        if (!(n >= 0.0 && n <= 4294967296.0) ||
            !in.Skip(static_cast<std::uint64_t>(n) * SizeOf(p.type))) {
            return false;
        }
    }
    return true;
}

/// Reads one line of element e from an ASCII body; values[i] gets scalar property i.
void ReadAsciiRecord(std::string_view line, const Element& e, double* values,
                     const std::string& name, std::size_t number) {
    std::size_t at = 0;
    const auto next = [&](std::string_view& field) {
        const std::size_t start = line.find_first_not_of(" \t\r", at);
        if (start == std::string_view::npos) {
            return false;
        }
        at = std::min(line.find_first_of(" \t\r", start), line.size());
        field = line.substr(start, at - start);
        return true;
    };
    const auto number_of = [&](std::string_view field) {
        double v = 0.0;
        if (const char* problem = ParseNumber(field, v)) {
            throw InputError(name, number, "'" + Printable(field) + "' " + problem);
        }
        return v;
    };
    std::string_view field;
    for (std::size_t i = 0; i < e.properties.size(); ++i) {
        if (!next(field)) {
            throw InputError(name, number,
                             "the line ends before the " + Printable(e.name) + "'s property " +
                                 Printable(e.properties[i].name));
        }
        if (!e.properties[i].list) {
            if (values != nullptr) {
                values[i] = number_of(field);
            }
            continue;
        }
        const double n = number_of(field);
        for (double k = 0; k < n; ++k) {
            if (!next(field)) {
                throw InputError(name, number,
                                 "the line ends inside the list " +
                                     Printable(e.properties[i].name));
            }
        }
    }
}

/// Fills samples from the records of the vertex element, skipping the elements before it.
class BodyReader {
public:
    BodyReader(InputFile& in, const Header& h) : m_in(in), m_h(h) {}

    std::vector<SFVec3f> Read(std::size_t vertexIndex, const ProgressHook& progress) {
        for (std::size_t i = 0; i < vertexIndex; ++i) {
            if (m_h.encoding != Encoding::kAscii && m_h.elements[i].properties.empty()) {
                continue; // records of no bytes
            }
            for (std::uint64_t r = 0; r < m_h.elements[i].count; ++r) {
                Record(m_h.elements[i], r, nullptr);
            }
        }
        const Element& vertex = m_h.elements[vertexIndex];
        const VertexLayout layout = Layout(vertex, m_in.Name());
        std::vector<double> values(vertex.properties.size());
        std::vector<SFVec3f> samples;
        ReserveLarge(samples, static_cast<std::size_t>(
                                  std::min<std::uint64_t>(vertex.count, MaxRecords(vertex))));
        for (std::uint64_t r = 0; r < vertex.count; ++r) {
            Record(vertex, r, values.data());
            double xyz[3];
            for (int axis = 0; axis < 3; ++axis) {
                xyz[axis] = values[layout.xyz[axis]];
                if (!std::isfinite(xyz[axis])) {
                    throw InputError(m_in.Name(), Place(vertex, r),
                                     std::string(1, "xyz"[axis]) + " is not a finite number");
                }
            }
            samples.emplace_back(xyz[0], xyz[1], xyz[2]);
            if (progress && (r + 1) % kBlockRecords == 0) {
                progress(static_cast<std::size_t>(r + 1), static_cast<std::size_t>(vertex.count));
            }
        }
        if (progress) {
            progress(samples.size(), samples.size());
        }
        return samples;
    }

private:
    /// The most records of e that the rest of the input can hold, so that a count in the
    /// header cannot make the reader reserve memory the file does not back.
    std::uint64_t MaxRecords(const Element& e) const {
        const std::uint64_t left = m_in.Size() - std::min(m_in.Size(), m_in.Position());
        const std::uint64_t least = m_h.encoding == Encoding::kAscii
                                        ? 2 * e.properties.size()
                                        : std::max<std::size_t>(1, e.properties.size());
        return m_in.Size() == 0 ? kBlockRecords : left / std::max<std::uint64_t>(least, 1) + 1;
    }

    std::string Place(const Element& e, std::uint64_t r) const {
        return Printable(e.name) + " record " + std::to_string(r + 1);
    }

    void Record(const Element& e, std::uint64_t r, double* values) {
        if (m_h.encoding != Encoding::kAscii) {
            if (!ReadBinaryRecord(m_in, e, m_h.encoding, values)) {
                throw InputError(m_in.Name(), Place(e, r), "the file ends inside it");
            }
            return;
        }
        std::string_view line;
        if (!m_in.NextLine(line)) {
            throw InputError(m_in.Name(), Place(e, r), "the file ends before it");
        }
        ++m_line;
        if (line.size() > InputFile::kMaxLine) {
            throw InputError(m_in.Name(), m_h.lines + m_line, "a line longer than 1 MiB");
        }
        ReadAsciiRecord(line, e, values, m_in.Name(), m_h.lines + m_line);
    }

    InputFile& m_in;
    const Header& m_h;
    std::size_t m_line = 0;
};

} // namespace

bool IsPly(std::string_view bytes) {
    return bytes.substr(0, 4) == "ply\n" || bytes.substr(0, 5) == "ply\r\n";
}

std::vector<SFVec3f> ReadPly(InputFile& in, const ProgressHook& progress) {
    const Header h = ReadHeader(in);
    for (std::size_t i = 0; i < h.elements.size(); ++i) {
        if (h.elements[i].name == "vertex") {
            if (h.elements[i].count == 0) {
                throw InputError(in.Name(), "header", "no vertices");
            }
            return BodyReader(in, h).Read(i, progress);
        }
    }
    throw InputError(in.Name(), "header", "no vertex element");
}

} // namespace zq::tool
