// mesh_args.cpp: options with a value, each checked against its range.
#include "mesh_args.h"

#include "../tool_error.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace zq::tool {
namespace {

[[noreturn]] void Bad(const std::string& what) {
    throw UsageError("mesh", what);
}

/// text as a finite number, all of it.
double Number(const std::string& name, const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || errno == ERANGE || !std::isfinite(value)) {
        Bad(name + " needs a number, not '" + text + "'");
    }
    return value;
}

/// text as a whole number of at least least.
std::size_t Count(const std::string& name, const std::string& text, std::size_t least,
                  const char* why) {
    char* end = nullptr;
    errno = 0;
    const unsigned long long value = std::strtoull(text.c_str(), &end, 10);
    if (text.empty() || text[0] == '-' || *end != '\0' || errno == ERANGE) {
        Bad(name + " needs a whole number, not '" + text + "'");
    }
    if (value < least) {
        Bad(name + " must be at least " + std::to_string(least) + " (" + why + "), not " + text);
    }
    return static_cast<std::size_t>(value);
}

/// Sets the option name from text; false for an unknown name.
bool SetOption(MeshOptions& options, const std::string& name, const std::string& text) {
    if (name == "--error") {
        options.limits.error = Number(name, text);
        if (!(options.limits.error > 0.0 && options.limits.error < 1.0)) {
            Bad("--error must be above 0 and below 1 (a fraction of the full range), not " + text);
        }
    } else if (name == "--triangles") {
        options.limits.triangles = Count(name, text, 2, "the two triangles between the corners");
    } else if (name == "--vertices") {
        options.limits.vertices = Count(name, text, 4, "the map's four corners");
    } else if (name == "--zscale") {
        options.zscale = Number(name, text);
        if (!(options.zscale > 0.0)) {
            Bad("--zscale must be above 0, not " + text);
        }
    } else if (name == "--base") {
        options.base = Number(name, text);
        if (!(options.base >= 0.0)) {
            Bad("--base must not be negative, not " + text);
        }
    } else {
        std::string* path = name == "--stl"   ? &options.stl
                            : name == "--obj" ? &options.obj
                            : name == "--ply" ? &options.ply
                            : name == "--svg" ? &options.svg
                                              : nullptr;
        if (path == nullptr) {
            return false;
        }
        *path = text;
    }
    return true;
}

} // namespace

MeshOptions ParseMeshArguments(const std::vector<std::string>& args) {
    MeshOptions options;
    bool haveInput = false;
    std::vector<std::string> seen;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
            return options;
        }
        if (arg.size() < 2 || arg[0] != '-') {
            if (haveInput) {
                Bad("more than one heightmap ('" + options.input + "' and '" + arg + "')");
            }
            options.input = arg;
            haveInput = true;
            continue;
        }
        const std::size_t equals = arg.find('=');
        const std::string name = arg.substr(0, equals);
        for (const std::string& earlier : seen) {
            if (earlier == name) {
                Bad(name + " given twice");
            }
        }
        seen.push_back(name);
        std::string value;
        if (equals != std::string::npos) {
            value = arg.substr(equals + 1);
        } else if (i + 1 < args.size()) {
            value = args[++i];
        }
        if (value.empty()) {
            Bad(name + " needs a value");
        }
        if (!SetOption(options, name, value)) {
            Bad("unknown option '" + name + "'");
        }
    }
    return options;
}

} // namespace zq::tool
