// terminal.h: whether a stream is an interactive terminal.
#ifndef ZQMATH_TOOLS_TERMINAL_H
#define ZQMATH_TOOLS_TERMINAL_H

#include <cstdio>

namespace zq::tool {

/// True when stream is a terminal (a console on Windows).
bool IsTerminal(std::FILE* stream);

} // namespace zq::tool

#endif
