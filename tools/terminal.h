// terminal.h: the tool's only platform-specific calls, on the standard streams.
#ifndef ZQMATH_TOOLS_TERMINAL_H
#define ZQMATH_TOOLS_TERMINAL_H

#include <cstdio>

namespace zq::tool {

/// True when stream is a terminal (a console on Windows).
bool IsTerminal(std::FILE* stream);
/// Makes stream pass bytes unchanged: on Windows, standard input would otherwise turn "\r\n"
/// into "\n" and stop at a Ctrl-Z byte, breaking binary input.
void SetBinary(std::FILE* stream);

} // namespace zq::tool

#endif
