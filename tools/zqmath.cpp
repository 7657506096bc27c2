// zqmath: the library's command-line tool.
#include <zqmath.h>

#include <cstdio>
#include <cstring>

namespace {

void PrintVersion() {
    BindMathServices(nullptr);
    std::printf("zqmath %s\n%s", ZQMATH_VERSION_STRING, CMathDLL::OnlyInstance()->Signature());
    UnbindMathServices(0);
}

int Usage(std::FILE* out, int status) {
    std::fprintf(out, "usage: zqmath version | --version | --help\n"
                      "  version   print the library's version and release signature\n");
    return status;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "version") == 0 ||
        std::strcmp(argv[1], "--version") == 0) {
        PrintVersion();
        return 0;
    }
    if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        return Usage(stdout, 0);
    }
    std::fprintf(stderr, "zqmath: unknown command '%s'\n", argv[1]);
    return Usage(stderr, 2);
}
