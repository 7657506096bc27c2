// number_text.h: doubles read from and written as text, the same on every platform.
#ifndef ZQMATH_TOOLS_NUMBER_TEXT_H
#define ZQMATH_TOOLS_NUMBER_TEXT_H

#include <string>
#include <string_view>

namespace zq::tool {

/// Reads the whole token as a finite double (a leading '+' allowed, no locale). Returns null
/// with value set, or why the token is not one ("is not a number", ...).
const char* ParseNumber(std::string_view token, double& value);
/// The shortest text that reads back as v exactly.
std::string NumberText(double v);

} // namespace zq::tool

#endif
