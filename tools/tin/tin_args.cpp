// tin_args.cpp: options with a value, flags, and the one optional input.
#include "tin_args.h"

#include "tool_error.h"

#include <algorithm>
#include <charconv>
#include <thread>

namespace zq::tool {
namespace {

/// The most threads --threads takes.
constexpr unsigned kMaxThreads = 1024;

/// The field of options that --NAME OUT sets, or null when NAME takes no file.
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

/// Applies --up or --threads with its value.
void SetChoice(TinOptions& options, const std::string& name, const std::string& value) {
    if (name == "--up") {
        if (value != "z" && value != "y") {
            throw UsageError("tin", "--up takes z or y, not '" + Printable(value) + "'");
        }
        options.up = value == "z" ? 2 : 1;
        return;
    }
    unsigned n = 0;
    const char* end = value.data() + value.size();
    const std::from_chars_result r = std::from_chars(value.data(), end, n);
    if (r.ptr != end || r.ec != std::errc() || n == 0 || n > kMaxThreads) {
        throw UsageError("tin", "--threads takes a count from 1 to " + std::to_string(kMaxThreads) +
                                    ", not '" + Printable(value) + "'");
    }
    options.threads = n;
}

} // namespace

TinOptions ParseTinArguments(const std::vector<std::string>& args) {
    TinOptions options;
    bool haveInput = false;
    std::vector<std::string> given;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
            return options;
        }
        if (arg == "--quiet" || arg == "-q") {
            options.quiet = true;
            continue;
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
        const bool choice = name == "--up" || name == "--threads";
        if (target == nullptr && !choice) {
            throw UsageError("tin", "unknown option '" + Printable(name) + "'");
        }
        if (std::find(given.begin(), given.end(), name) != given.end()) {
            throw UsageError("tin", name + " given twice");
        }
        given.push_back(name);
        std::string value;
        if (equals != std::string::npos) {
            value = arg.substr(equals + 1);
        } else if (i + 1 < args.size()) {
            value = args[++i];
        }
        if (value.empty()) {
            throw UsageError("tin", name + (choice ? " needs a value" : " needs a file name"));
        }
        if (target != nullptr) {
            *target = value;
        } else {
            SetChoice(options, name, value);
        }
    }
    if (options.threads == 0) {
        options.threads = std::max(1u, std::thread::hardware_concurrency());
    }
    return options;
}

} // namespace zq::tool
