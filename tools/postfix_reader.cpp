// postfix_reader.cpp: the tool's names of the engine's operator codes, and the token reader.
#include "postfix_reader.h"

#include "number_text.h"
#include "tool_error.h"

#include <vector>

namespace zq::tool {
namespace {

/// An operator of the engine: its code, how many operands it takes, and its names.
struct Operator {
    int code;
    int operands;
    const char* name;
    const char* symbol;       ///< a second name, or null
    const char* operandNames; ///< as the help shows them
    const char* summary;
};

// Code 22 (a referenced expression) has no name: a text cannot refer to an expression. Codes
// 23 to 26 do the same, so only 23 is named.
constexpr Operator kOperators[] = {
    {1, 2, "add", "+", "a b", "a + b, scalars or vectors of one size"},
    {2, 2, "sub", "-", "a b", "a - b"},
    {3, 2, "mul", "*", "a b", "a * b, component-wise"},
    {4, 2, "div", "/", "u v", "u / v, vectors component-wise"},
    {29, 1, "neg", nullptr, "x", "-x"},
    {9, 1, "sqrt", nullptr, "x", "square root"},
    {10, 1, "abs", nullptr, "x", "absolute value"},
    {15, 2, "pow", nullptr, "x y", "x to the power y"},
    {36, 2, "min", nullptr, "x y", "the smaller (x on a tie or NaN)"},
    {37, 2, "max", nullptr, "x y", "the greater (x on a tie or NaN)"},
    {5, 1, "sin", nullptr, "x", "sine (radians)"},
    {8, 1, "cos", nullptr, "x", "cosine"},
    {6, 1, "tan", nullptr, "x", "tangent"},
    {11, 1, "atan", nullptr, "x", "arc tangent"},
    {27, 0, "pi", nullptr, "", "pi"},
    {14, 1, "sqlen", nullptr, "v", "squared length of a 3- or 4-vector, x * x of a scalar"},
    {18, 2, "dot", nullptr, "u v", "dot product of 3-vectors"},
    {19, 2, "cross", nullptr, "u v", "cross product of 3-vectors"},
    {30, 2, "vec2", nullptr, "x y", "the 2-vector (x, y)"},
    {31, 3, "vec3", nullptr, "x y z", "the 3-vector (x, y, z)"},
    {17, 4, "quat", nullptr, "x y z w", "the quaternion"},
    {12, 2, "eq", "==", "a b", "1 when equal, else 0"},
    {13, 2, "ne", "!=", "a b", "1 when not equal, else 0"},
    {16, 1, "not", "!", "a", "1 when a is false, else 0"},
    {32, 3, "if", nullptr, "c a b", "a when c is true, else b"},
    {35, 0, "true", nullptr, "", "a marker that is true and nothing else"},
    {7, 0, "time", nullptr, "", "the marked time / 100"},
    {28, 0, "m1", nullptr, "", "the first matrix (the identity here)"},
    {33, 0, "m2", nullptr, "", "the second matrix (the identity here)"},
    {34, 0, "m1tom2", nullptr, "", "copies m1 into m2, gives m2"},
    {20, 1, "position", nullptr, "M", "the matrix's position row"},
    {21, 1, "view", nullptr, "M", "the matrix's view row"},
    {23, 3, "rotate", nullptr, "M v s", "M turned by the angles v * s about x, y, z"},
};

const Operator* FindOperator(const std::string& token) {
    for (const Operator& op : kOperators) {
        if (token == op.name || (op.symbol != nullptr && token == op.symbol)) {
            return &op;
        }
    }
    return nullptr;
}

/// The blank-separated tokens; a vector in parentheses is one token even with blanks inside.
std::vector<std::string> Tokens(const std::string& text) {
    std::vector<std::string> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] == ' ' || text[i] == '\t' || text[i] == '\n') {
            ++i;
            continue;
        }
        std::size_t end = i;
        if (text[i] == '(') {
            end = text.find(')', i);
            end = end == std::string::npos ? text.size() : end + 1;
        } else {
            while (end < text.size() && text[end] != ' ' && text[end] != '\t' &&
                   text[end] != '\n') {
                ++end;
            }
        }
        tokens.push_back(text.substr(i, end - i));
        i = end;
    }
    return tokens;
}

/// "token N 'text'", how messages name a token.
std::string Where(std::size_t index, const std::string& token) {
    return "token " + std::to_string(index + 1) + " '" + token + "'";
}

/// The term of a vector token "(x,y...)".
CExpressionTerm VectorTerm(const std::string& token, std::size_t index) {
    if (token.back() != ')') {
        throw UsageError("eval", Where(index, token) + ": a vector needs its closing ')'");
    }
    std::vector<double> c;
    std::size_t start = 1;
    while (start < token.size()) {
        std::size_t end = token.find(',', start);
        end = end == std::string::npos ? token.size() - 1 : end;
        std::string part = token.substr(start, end - start);
        part.erase(0, part.find_first_not_of(" \t"));
        part.erase(part.find_last_not_of(" \t") + 1);
        double value = 0.0;
        if (const char* problem = ParseNumber(part, value)) {
            throw UsageError("eval", Where(index, token) + ": '" + part + "' " + problem);
        }
        c.push_back(value);
        start = end + 1;
    }
    using T = CExpressionTerm;
    switch (c.size()) {
    case 2:
        return T(T::kConstantTerm, SFVec2f(c[0], c[1]));
    case 3:
        return T(T::kConstantTerm, SFVec3f(c[0], c[1], c[2]));
    case 4:
        return T(T::kConstantTerm, SFVec4f(c[0], c[1], c[2], c[3]));
    default:
        throw UsageError("eval", Where(index, token) + ": a vector has 2, 3 or 4 components");
    }
}

} // namespace

CExpression ReadPostfix(const std::string& text) {
    const std::vector<std::string> tokens = Tokens(text);
    if (tokens.empty()) {
        throw UsageError("eval", "no expression given");
    }
    CExpression expression;
    int values = 0; // on the stack when the expression is evaluated
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string& token = tokens[i];
        double value = 0.0;
        if (token[0] == '(') {
            expression.PushTerm(VectorTerm(token, i));
        } else if (const Operator* op = FindOperator(token)) {
            if (values < op->operands) {
                throw UsageError("eval", Where(i, token) + " takes " +
                                             std::to_string(op->operands) + " operands, " +
                                             std::to_string(values) + " given");
            }
            values -= op->operands;
            expression.PushTerm(CExpressionTerm(CExpressionTerm::kOperatorTerm, op->code));
        } else if (const char* problem = ParseNumber(token, value)) {
            const std::string what = problem;
            throw UsageError("eval", Where(i, token) + " " +
                                         (what == "is not a number"
                                              ? "is not a number, a vector or an operator"
                                              : what));
        } else {
            expression.PushTerm(CExpressionTerm(CExpressionTerm::kConstantTerm, value));
        }
        ++values;
    }
    if (values != 1) {
        throw UsageError("eval", std::to_string(values) +
                                     " values are left: an operator is missing at the end");
    }
    return expression;
}

void PrintOperators(std::FILE* out) {
    for (const Operator& op : kOperators) {
        std::string names = op.name;
        if (op.symbol != nullptr) {
            names += std::string(" ") + op.symbol;
        }
        std::fprintf(out, "  %-10s %-9s %s\n", names.c_str(), op.operandNames, op.summary);
    }
}

} // namespace zq::tool
