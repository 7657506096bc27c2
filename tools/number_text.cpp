// number_text.cpp: std::from_chars and std::to_chars, which ignore the locale.
#include "number_text.h"

#include <charconv>
#include <cmath>

namespace zq::tool {

const char* ParseNumber(std::string_view token, double& value) {
    const char* first = token.data();
    const char* last = first + token.size();
    if (first != last && *first == '+') {
        ++first; // from_chars does not take a leading plus
    }
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (first == last || result.ptr != last || result.ec == std::errc::invalid_argument) {
        return "is not a number";
    }
    if (result.ec == std::errc::result_out_of_range) {
        return "is out of the range of a double";
    }
    if (!std::isfinite(value)) {
        return "is not a finite number";
    }
    return nullptr;
}

std::string NumberText(double v) {
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, v);
    return std::string(text, result.ptr);
}

} // namespace zq::tool
