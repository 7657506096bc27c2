// tool_error.h: the failures that end a command, with their exit status.
#ifndef ZQMATH_TOOLS_TOOL_ERROR_H
#define ZQMATH_TOOLS_TOOL_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zq::tool {

/// Exit status of bad usage or bad input.
constexpr int kStatusBadInput = 2;
/// Exit status of a failure that is not the caller's (an output that cannot be written).
constexpr int kStatusFailure = 1;

/// A message ready to print, and the status the program exits with.
class ToolError : public std::runtime_error {
public:
    ToolError(int status, const std::string& message)
        : std::runtime_error(message), m_status(status) {}
    int Status() const { return m_status; }

private:
    int m_status;
};

/// "zqmath: what (see 'zqmath COMMAND --help')", status 2.
ToolError UsageError(const std::string& command, const std::string& what);
/// "FILE:LINE: what", status 2.
ToolError InputError(const std::string& file, std::size_t line, const std::string& what);
/// "FILE: PLACE: what" (a place such as "header" or "point record 7"), status 2.
ToolError InputError(const std::string& file, const std::string& place, const std::string& what);
/// The text with every byte outside printable ASCII written as \xHH, and a backslash as \\, so
/// that bytes of a binary input cannot disturb a terminal.
std::string Printable(std::string_view text);
/// "zqmath: what", status 1.
ToolError Failure(const std::string& what);

} // namespace zq::tool

#endif
