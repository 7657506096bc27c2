// sample_reader.cpp: the line parser and the whole-stream read it works on.
#include "sample_reader.h"

#include "number_text.h"
#include "tool_error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace zq::tool {
namespace {

bool IsSeparator(char c) {
    return c == ' ' || c == '\t' || c == ',' || c == '\r' || c == '\v' || c == '\f';
}

/// The number a whole token spells; throws InputError otherwise.
double ParseSampleNumber(std::string_view token, const std::string& source, std::size_t line) {
    double value = 0.0;
    if (const char* problem = ParseNumber(token, value)) {
        throw InputError(source, line, "'" + std::string(token) + "' " + problem);
    }
    return value;
}

/// Appends the sample of one line (its comment already cut off), if it holds one.
void ParseLine(std::string_view text, const std::string& source, std::size_t line,
               std::vector<SFVec3f>& samples) {
    double xyz[3] = {0.0, 0.0, 0.0};
    int count = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        if (IsSeparator(text[i])) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < text.size() && !IsSeparator(text[end])) {
            ++end;
        }
        const double value = ParseSampleNumber(text.substr(i, end - i), source, line);
        if (count < 3) {
            xyz[count] = value;
        }
        ++count;
        i = end;
    }
    if (count == 0) {
        return;
    }
    if (count != 3) {
        throw InputError(source, line,
                         std::to_string(count) + (count == 1 ? " number" : " numbers") +
                             " where x y z was expected");
    }
    samples.emplace_back(xyz[0], xyz[1], xyz[2]);
}

/// Everything the stream holds.
std::string ReadAll(std::FILE* in) {
    std::string text;
    char buffer[1 << 16];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, in)) > 0) {
        text.append(buffer, n);
    }
    return text;
}

} // namespace

std::vector<SFVec3f> ParseSamples(std::string_view text, const std::string& source) {
    std::vector<SFVec3f> samples;
    std::size_t line = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        ++line;
        std::string_view content = text.substr(start, end - start);
        content = content.substr(0, content.find('#'));
        ParseLine(content, source, line, samples);
        start = end + 1;
    }
    if (samples.empty()) {
        throw InputError(source, line == 0 ? 1 : line, "no samples in the input");
    }
    return samples;
}

std::vector<SFVec3f> ReadSamples(const std::string& path) {
    if (path == "-") {
        const std::string text = ReadAll(stdin);
        if (std::ferror(stdin)) {
            throw Failure("cannot read standard input");
        }
        return ParseSamples(text, "<stdin>");
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                         &std::fclose);
    if (!file) {
        throw ToolError(kStatusBadInput,
                        "zqmath: cannot open '" + path + "': " + std::strerror(errno));
    }
    const std::string text = ReadAll(file.get());
    if (std::ferror(file.get())) {
        throw Failure("cannot read '" + path + "'");
    }
    return ParseSamples(text, path);
}

} // namespace zq::tool
