// version_command.cpp: `zqmath version`.
#include "commands.h"
#include "tool_error.h"

#include <zqmath.h>

#include <cstdio>

namespace zq::tool {

int RunVersion(const std::vector<std::string>& args) {
    if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
        std::fputs("usage: zqmath version\n       zqmath --version\n\n"
                   "Prints the library's version and its release signature.\n",
                   stdout);
        return 0;
    }
    if (!args.empty()) {
        throw UsageError("version", "unexpected argument '" + args[0] + "'");
    }
    BindMathServices(nullptr);
    std::printf("zqmath %s\n%s", ZQMATH_VERSION_STRING, CMathDLL::OnlyInstance()->Signature());
    UnbindMathServices(0);
    return 0;
}

} // namespace zq::tool
