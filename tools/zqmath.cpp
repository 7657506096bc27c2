// zqmath: the library's command-line tool. Dispatches to the subcommands and turns failures
// into messages and exit statuses.
#include "commands.h"
#include "tool_error.h"

#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace zq::tool;

void PrintHelp() {
    std::fputs("usage: zqmath COMMAND [ARGUMENTS]\n"
               "\n"
               "  tin       triangulate height samples; write OBJ, PLY and SVG\n"
               "  mesh      mesh a heightmap (PNG, PGM) within an error; write STL, OBJ, PLY, SVG\n"
               "  eval      evaluate a postfix expression, such as \"(1,2,3) 2 mul\"\n"
               "  version   print the library's version and release signature\n"
               "\n"
               "'zqmath COMMAND --help' describes a command. --version is 'zqmath version'.\n"
               "\n"
               "example: zqmath tin --obj terrain.obj --svg terrain.svg\n",
               stdout);
}

int Dispatch(const std::vector<std::string>& args) {
    if (args.empty()) {
        throw UsageError("", "no command given");
    }
    const std::string& command = args[0];
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "--help" || command == "-h" || command == "help") {
        PrintHelp();
        return 0;
    }
    if (command == "tin") {
        return RunTin(rest);
    }
    if (command == "mesh") {
        return RunMesh(rest);
    }
    if (command == "eval") {
        return RunEval(rest);
    }
    if (command == "version" || command == "--version") {
        return RunVersion(rest);
    }
    throw UsageError("", "unknown command '" + command + "'");
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Dispatch(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const ToolError& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return e.Status();
    } catch (const std::bad_alloc&) {
        std::fputs("zqmath: out of memory\n", stderr);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zqmath: internal error: %s\n", e.what());
    } catch (...) {
        std::fputs("zqmath: internal error\n", stderr);
    }
    return kStatusFailure;
}
