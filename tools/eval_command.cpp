// eval_command.cpp: `zqmath eval`: a postfix expression evaluated by CExpression.
#include "commands.h"
#include "number_text.h"
#include "postfix_reader.h"
#include "tool_error.h"

#include <cstdio>

namespace zq::tool {
namespace {

void PrintHelp() {
    std::fputs("usage: zqmath eval \"POSTFIX\"\n"
               "\n"
               "Evaluates a postfix expression with the library's expression engine and prints\n"
               "the result's format and value. Operands come before their operator: \"1 2 sub\"\n"
               "is 1 - 2. Tokens are numbers, vectors (x,y) (x,y,z) (x,y,z,w) and operators:\n"
               "\n",
               stdout);
    PrintOperators(stdout);
    std::fputs("\n"
               "examples: zqmath eval \"2 10 pow 1 sub\"\n"
               "          zqmath eval \"(1,0,0) (0,1,0) cross\"\n",
               stdout);
}

/// "(x, y, ...)" of n components.
std::string Components(const double* c, int n) {
    std::string text = "(";
    for (int i = 0; i < n; ++i) {
        text += (i == 0 ? "" : ", ") + NumberText(c[i]);
    }
    return text + ")";
}

void PrintResult(const CExpressionTerm& result) {
    using T = CExpressionTerm;
    switch (result.GetFormat()) {
    case T::kScalarFormat:
        if (result.IsIntegerConstant()) {
            std::printf("scalar %d\n", result.GetIntegerValue());
        } else {
            std::printf("scalar %s\n", NumberText(result.GetScalar()).c_str());
        }
        return;
    case T::kVector2Format: {
        const SFVec2f v = result.GetVector2();
        const double c[] = {v.x, v.y};
        std::printf("vector2 %s\n", Components(c, 2).c_str());
        return;
    }
    case T::kVector3Format: {
        const SFVec3f v = result.GetVector3();
        const double c[] = {v.x, v.y, v.z};
        std::printf("vector3 %s\n", Components(c, 3).c_str());
        return;
    }
    case T::kVector4Format: {
        const SFVec4f v = result.GetVector4();
        const double c[] = {v.x, v.y, v.z, v.w};
        std::printf("vector4 %s\n", Components(c, 4).c_str());
        return;
    }
    case T::kQuatFormat: {
        const CQuat q = result.GetQuat();
        const double c[] = {q.x, q.y, q.z, q.w};
        std::printf("quaternion %s\n", Components(c, 4).c_str());
        return;
    }
    case T::kMatrix4Format: {
        const SFMatrix& m = *result.GetMatrix4();
        std::printf("matrix4\n");
        for (int row = 0; row < 4; ++row) {
            const double c[] = {m[4 * row], m[4 * row + 1], m[4 * row + 2], m[4 * row + 3]};
            std::printf("  %s\n", Components(c, 4).c_str());
        }
        return;
    }
    case T::kMarkerFormat:
        std::printf("marker (true)\n");
        return;
    default:
        std::printf("format %d\n", static_cast<int>(result.GetFormat()));
    }
}

/// The value of expression; the engine's thrown int becomes a message.
CExpressionTerm Evaluate(const CExpression& expression) {
    SFMatrix first;
    SFMatrix second;
    first.Identity();
    second.Identity();
    try {
        return expression.Evaluate(&first, &second);
    } catch (int) {
        throw UsageError("eval", "an operand has a format its operator does not take "
                                 "(a scalar where a vector is needed, or vectors of two sizes)");
    }
}

} // namespace

int RunEval(const std::vector<std::string>& args) {
    if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
        PrintHelp();
        return 0;
    }
    // The expression may come as one argument or several: "1 2 add" or 1 2 add.
    std::string text;
    for (const std::string& arg : args) {
        text += arg + " ";
    }
    PrintResult(Evaluate(ReadPostfix(text)));
    return 0;
}

} // namespace zq::tool
