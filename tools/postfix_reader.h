// postfix_reader.h: the text of `zqmath eval` turned into an expression.
#ifndef ZQMATH_TOOLS_POSTFIX_READER_H
#define ZQMATH_TOOLS_POSTFIX_READER_H

#include <expression.h>

#include <cstdio>
#include <string>

namespace zq::tool {

/// The expression of a postfix text: numbers, vectors "(x,y)" to "(x,y,z,w)" and operator
/// names, separated by blanks. Checks that every operator has its operands and that exactly
/// one value remains; throws UsageError naming the token otherwise.
CExpression ReadPostfix(const std::string& text);
/// The operator names, their operands and what they give, one a line.
void PrintOperators(std::FILE* out);

} // namespace zq::tool

#endif
