// terminal.cpp: the tool's only platform-specific call.
#include "terminal.h"

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zq::tool {

bool IsTerminal(std::FILE* stream) {
#if defined(_WIN32)
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

} // namespace zq::tool
