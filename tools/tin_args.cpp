// tin_args.cpp: options with a value, and the one optional input.
#include "tin_args.h"

#include "tool_error.h"

namespace zq::tool {
namespace {

/// The field of options that --NAME sets, or null for an unknown name.
std::string* OutputOption(TinOptions& options, const std::string& name) {
    if (name == "--obj") {
        return &options.obj;
    }
    if (name == "--ply") {
        return &options.ply;
    }
    if (name == "--svg") {
        return &options.svg;
    }
    return nullptr;
}

} // namespace

TinOptions ParseTinArguments(const std::vector<std::string>& args) {
    TinOptions options;
    bool haveInput = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
            return options;
        }
        if (arg.size() < 2 || arg[0] != '-') {
            if (haveInput) {
                throw UsageError("tin",
                                 "more than one input ('" + options.input + "' and '" + arg + "')");
            }
            options.input = arg;
            haveInput = true;
            continue;
        }
        const std::size_t equals = arg.find('=');
        const std::string name = arg.substr(0, equals);
        std::string* target = OutputOption(options, name);
        if (target == nullptr) {
            throw UsageError("tin", "unknown option '" + name + "'");
        }
        if (!target->empty()) {
            throw UsageError("tin", name + " given twice");
        }
        if (equals != std::string::npos) {
            *target = arg.substr(equals + 1);
        } else if (i + 1 < args.size()) {
            *target = args[++i];
        }
        if (target->empty()) {
            throw UsageError("tin", name + " needs a file name");
        }
    }
    return options;
}

} // namespace zq::tool
