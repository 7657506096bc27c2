// evaluator.h: the postfix evaluator behind CExpression::Evaluate. Not installed.
#ifndef ZQMATH_EVALUATOR_H
#define ZQMATH_EVALUATOR_H

#include "expression.h"

#include <vector>

namespace zq::detail {

/// The two matrices last passed to CExpression::Evaluate, for the whole library.
struct EvaluationMatrices {
    SFMatrix* first = nullptr;
    SFMatrix* second = nullptr;
};

/// The library-wide matrix slots.
EvaluationMatrices& LibraryMatrices();

/// The value of the sub-expression of stack that ends at index, formals resolved by name from
/// formals (may be null); index is left just below the sub-expression. Throws int 0 on a bad
/// index, a missing operand or an unknown operator.
CExpressionTerm EvaluateEndingAt(const std::vector<CExpressionTerm>& stack,
                                 const std::vector<CExpressionTerm>* formals, int& index);

/// The number of operands of an operator code; throws int 0 for an unknown code.
int OperandCount(int code);

/// The operator of code applied to its OperandCount(code) operands, first operand first.
CExpressionTerm ApplyOperator(int code, const CExpressionTerm* operands);

} // namespace zq::detail

#endif
