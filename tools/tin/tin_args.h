// tin_args.h: the command line of `zqmath tin`.
#ifndef ZQMATH_TOOLS_TIN_TIN_ARGS_H
#define ZQMATH_TOOLS_TIN_TIN_ARGS_H

#include <string>
#include <vector>

namespace zq::tool {

/// What `zqmath tin` was asked to do.
struct TinOptions {
    bool help = false;
    bool quiet = false;
    /// Empty for the built-in sample terrain, "-" for standard input.
    std::string input;
    /// Output paths; empty when that file is not wanted.
    std::string obj;
    std::string ply;
    std::string svg;
    /// The input coordinate that is the height: 1 for y, 2 for z.
    int up = 2;
    /// Threads the triangulation may use; 0 until given (then the machine's cores).
    unsigned threads = 0;
};

/// The options of the arguments after "tin": [FILE|-] [--obj OUT] [--ply OUT] [--svg OUT]
/// [--up z|y] [--threads N] [--quiet], "--NAME=VALUE" also accepted. Throws UsageError.
TinOptions ParseTinArguments(const std::vector<std::string>& args);

} // namespace zq::tool

#endif
