// The postfix walk of the expression evaluator.
#include "expression/evaluator.h"

#include <cstddef>

namespace {

using Term = CExpressionTerm;

/// Operators are recognised by their plain kind: the int constructor adds kIntegerValueFlag.
bool IsOperatorTerm(const Term& term) {
    return term.GetPlainType() == Term::kOperatorTerm;
}

/// The first index of the sub-expression ending at end: walks down until every operand that
/// the operators met so far need has been found.
std::ptrdiff_t StartOfSubExpression(const std::vector<Term>& stack, std::ptrdiff_t end) {
    std::ptrdiff_t needed = 1;
    std::ptrdiff_t i = end;
    for (; needed > 0; --i) {
        if (i < 0) {
            throw 0; // an operator without enough operands below it
        }
        --needed;
        if (IsOperatorTerm(stack[static_cast<std::size_t>(i)])) {
            needed +=
                zq::detail::OperandCount(stack[static_cast<std::size_t>(i)].GetIntegerValue());
        }
    }
    return i + 1;
}

/// A formal takes the value of the first formal of the same name in the list, if any.
const Term& ValueOf(const Term& term, const std::vector<Term>* formals) {
    if (term.GetPlainType() != Term::kFormalTerm || formals == nullptr) {
        return term;
    }
    for (const Term& formal : *formals) {
        if (formal.GetName() == term.GetName()) {
            return formal;
        }
    }
    return term;
}

} // namespace

namespace zq::detail {

EvaluationMatrices& LibraryMatrices() {
    static EvaluationMatrices matrices;
    return matrices;
}

// Evaluated forward over the sub-expression's range with a value stack, so that long operator
// chains cost no recursion.
CExpressionTerm EvaluateEndingAt(const std::vector<CExpressionTerm>& stack,
                                 const std::vector<CExpressionTerm>* formals, int& index) {
    if (index < 0 || static_cast<std::size_t>(index) >= stack.size()) {
        throw 0;
    }
    const std::ptrdiff_t start = StartOfSubExpression(stack, index);
    std::vector<Term> values;
    for (std::ptrdiff_t i = start; i <= index; ++i) {
        const Term& term = stack[static_cast<std::size_t>(i)];
        if (!IsOperatorTerm(term)) {
            values.push_back(ValueOf(term, formals));
            continue;
        }
        const int code = term.GetIntegerValue();
        const std::size_t count = static_cast<std::size_t>(OperandCount(code));
        Term result = ApplyOperator(code, values.data() + (values.size() - count));
        values.resize(values.size() - count);
        values.push_back(result);
    }
    index = static_cast<int>(start) - 1;
    return values.back();
}

} // namespace zq::detail
