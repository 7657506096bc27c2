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

ToolError Failure(const std::string& what) {
    return ToolError(kStatusFailure, "zqmath: " + what);
}

} // namespace zq::tool
