// tool_error.cpp: the messages of the three kinds of failure.
#include "tool_error.h"

namespace zq::tool {

ToolError UsageError(const std::string& command, const std::string& what) {
    const std::string help = command.empty() ? "zqmath --help" : "zqmath " + command + " --help";
    return ToolError(kStatusBadInput, "zqmath: " + what + " (see '" + help + "')");
}

ToolError InputError(const std::string& file, std::size_t line, const std::string& what) {
    return ToolError(kStatusBadInput, file + ":" + std::to_string(line) + ": " + what);
}

ToolError InputError(const std::string& file, const std::string& place, const std::string& what) {
    return ToolError(kStatusBadInput, file + ": " + place + ": " + what);
}

std::string Printable(std::string_view text) {
    static const char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '\\') {
            out += "\\\\";
        } else if (byte >= 0x20 && byte < 0x7f) {
            out += c;
        } else {
            out += "\\x";
            out += kHex[byte >> 4];
            out += kHex[byte & 15];
        }
    }
    return out;
}

ToolError Failure(const std::string& what) {
    return ToolError(kStatusFailure, "zqmath: " + what);
}

} // namespace zq::tool
