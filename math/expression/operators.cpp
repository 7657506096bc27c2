// The operators of the expression evaluator, by code (the table is in expression.h).
#include "expression/evaluator.h"
#include "mathdll.h"

#include <cmath>

namespace {

using Term = CExpressionTerm;

/// Expression references (code 22) nested deeper than this are refused: a self-reference
/// would otherwise recurse until the stack overflows.
const int kMaxNesting = 256;

/// The address a marker term points to: its slot must hold something to count as true.
char sMarker;

Term Scalar(double value) {
    return Term(Term::kConstantTerm, value);
}

/// 1.0 or 0.0 as a double constant, which IsTrue reads (an integer term is never true).
Term Truth(bool value) {
    return Scalar(value ? 1.0 : 0.0);
}

/// The matrix of a matrix term; a null one is a missing operand.
SFMatrix& MatrixOf(const Term& term) {
    SFMatrix* matrix = term.GetMatrix4();
    if (matrix == nullptr) {
        throw 0;
    }
    return *matrix;
}

/// A matrix slot as a matrix term; an unset slot is a missing operand.
Term MatrixTerm(SFMatrix* matrix) {
    if (matrix == nullptr) {
        throw 0;
    }
    return Term(Term::kConstantTerm, matrix);
}

/// Codes 1 to 3: op per component of two operands of one format, scalar or 2/3/4-vector.
template <class Op>
Term ComponentWise(const Term& a, const Term& b, Op op) {
    if (a.GetFormat() != b.GetFormat()) {
        throw 0;
    }
    switch (a.GetFormat()) {
    case Term::kScalarFormat:
        return Scalar(op(a.GetScalar(), b.GetScalar()));
    case Term::kVector2Format: {
        const SFVec2f u = a.GetVector2();
        const SFVec2f v = b.GetVector2();
        return Term(Term::kConstantTerm, SFVec2f(op(u.x, v.x), op(u.y, v.y)));
    }
    case Term::kVector3Format: {
        const SFVec3f u = a.GetVector3();
        const SFVec3f v = b.GetVector3();
        return Term(Term::kConstantTerm, SFVec3f(op(u.x, v.x), op(u.y, v.y), op(u.z, v.z)));
    }
    case Term::kVector4Format: {
        const SFVec4f u = a.GetVector4();
        const SFVec4f v = b.GetVector4();
        return Term(Term::kConstantTerm,
                    SFVec4f(op(u.x, v.x), op(u.y, v.y), op(u.z, v.z), op(u.w, v.w)));
    }
    default:
        throw 0;
    }
}

/// Code 4: the vector classes' component-wise division; scalars are not accepted.
Term Quotient(const Term& a, const Term& b) {
    switch (a.GetFormat()) {
    case Term::kVector2Format:
        return Term(Term::kConstantTerm, a.GetVector2() / b.GetVector2());
    case Term::kVector3Format:
        return Term(Term::kConstantTerm, a.GetVector3() / b.GetVector3());
    case Term::kVector4Format:
        return Term(Term::kConstantTerm, a.GetVector4() / b.GetVector4());
    default:
        throw 0;
    }
}

/// Codes 12 and 13: value equality of scalars and vectors of one format, else equal truth.
bool Equal(const Term& a, const Term& b, bool wantEqual) {
    const Term::ERuleTermFormat format = a.GetFormat();
    if (format != b.GetFormat()) {
        return (a.IsTrue() == b.IsTrue()) == wantEqual;
    }
    switch (format) {
    case Term::kScalarFormat:
        return (a.GetScalar() == b.GetScalar()) == wantEqual;
    case Term::kVector2Format: // exact, unlike SFVec2f's tolerant ==
        return ((a.GetVector2() - b.GetVector2()).norm() == 0.0) == wantEqual;
    case Term::kVector3Format:
        return wantEqual ? a.GetVector3() == b.GetVector3() : a.GetVector3() != b.GetVector3();
    case Term::kVector4Format:
        return wantEqual ? a.GetVector4() == b.GetVector4() : a.GetVector4() != b.GetVector4();
    default:
        return (a.IsTrue() == b.IsTrue()) == wantEqual;
    }
}

/// Code 14: the squared length.
double SquaredLength(const Term& v) {
    switch (v.GetFormat()) {
    case Term::kVector4Format:
        return v.GetVector4().Magnitude();
    case Term::kVector3Format:
        return v.GetVector3().Magnitude();
    default: {
        const double x = v.GetScalar();
        return x * x;
    }
    }
}

/// Code 22, nested no deeper than kMaxNesting.
Term Referenced(const Term& reference) {
    static int depth = 0;
    const CExpression* expression = reference.GetExpression();
    if (expression == nullptr || depth >= kMaxNesting) {
        throw 0;
    }
    struct Nesting {
        Nesting() { ++depth; }
        ~Nesting() { --depth; }
    } nesting;
    const zq::detail::EvaluationMatrices slots = zq::detail::LibraryMatrices();
    return expression->Evaluate(slots.first, slots.second);
}

/// Codes 23 to 26: M turned by the angles v * s about x, y, z in turn, at its own position.
Term TurnInPlace(const Term& m, const Term& v, const Term& s) {
    SFMatrix& matrix = MatrixOf(m);
    const SFVec3f angles = v.GetVector3() * s.GetScalar();
    const SFVec3f position = matrix.GetPosition();
    matrix.PostRotateX(angles.x);
    matrix.PostRotateY(angles.y);
    matrix.PostRotateZ(angles.z);
    matrix.SetPosition(position);
    return m;
}

/// Code 34: M2 = M1.
Term CopyFirstIntoSecond() {
    const zq::detail::EvaluationMatrices slots = zq::detail::LibraryMatrices();
    if (slots.first == nullptr || slots.second == nullptr) {
        throw 0;
    }
    *slots.second = *slots.first;
    return Term(Term::kConstantTerm, slots.second);
}

/// The smaller (or greater) of two scalars; a tie or NaN gives the first.
Term Extreme(const Term& a, const Term& b, bool greater) {
    const double x = a.GetScalar();
    const double y = b.GetScalar();
    return Scalar((greater ? y > x : y < x) ? y : x);
}

} // namespace

namespace zq::detail {

int OperandCount(int code) {
    static const int kCounts[38] = {-1,                         // 0 is no operator
                                    2,  2, 2, 2, 1, 1, 0,       // 1-7
                                    1,  1, 1, 1, 2, 2, 1, 2, 1, // 8-16
                                    4,  2, 2, 1, 1, 1,          // 17-22
                                    3,  3, 3, 3, 0, 0, 1, 2, 3, // 23-31
                                    3,  0, 0, 0, 2, 2};         // 32-37
    if (code < 1 || code > 37) {
        throw 0;
    }
    return kCounts[code];
}

CExpressionTerm ApplyOperator(int code, const CExpressionTerm* op) {
    switch (code) {
    case 1:
        return ComponentWise(op[0], op[1], [](double x, double y) { return x + y; });
    case 2:
        return ComponentWise(op[0], op[1], [](double x, double y) { return x - y; });
    case 3:
        return ComponentWise(op[0], op[1], [](double x, double y) { return x * y; });
    case 4:
        return Quotient(op[0], op[1]);
    case 5:
        return Scalar(std::sin(op[0].GetScalar()));
    case 6:
        return Scalar(std::tan(op[0].GetScalar()));
    case 7: // unsigned division, truncated, before the conversion
        return Scalar(static_cast<double>(GetMarkedTime() / 100u));
    case 8:
        return Scalar(std::cos(op[0].GetScalar()));
    case 9:
        return Scalar(std::sqrt(op[0].GetScalar()));
    case 10:
        return Scalar(std::fabs(op[0].GetScalar()));
    case 11:
        return Scalar(std::atan(op[0].GetScalar()));
    case 12:
        return Truth(Equal(op[0], op[1], true));
    case 13:
        return Truth(Equal(op[0], op[1], false));
    case 14:
        return Scalar(SquaredLength(op[0]));
    case 15:
        return Scalar(std::pow(op[0].GetScalar(), op[1].GetScalar()));
    case 16:
        return Truth(op[0].IsFalse());
    case 17:
        return Term(Term::kConstantTerm, CQuat(op[0].GetScalar(), op[1].GetScalar(),
                                               op[2].GetScalar(), op[3].GetScalar()));
    case 18:
        return Scalar(op[0].GetVector3().DotProduct(op[1].GetVector3()));
    case 19:
        return Term(Term::kConstantTerm, op[0].GetVector3().CrossProduct(op[1].GetVector3()));
    case 20: {
        const SFMatrix& m = MatrixOf(op[0]);
        return Term(Term::kConstantTerm, SFVec3f(m[12], m[13], m[14]));
    }
    case 21:
        return Term(Term::kConstantTerm, MatrixOf(op[0]).GetViewVector());
    case 22:
        return Referenced(op[0]);
    case 23:
    case 24:
    case 25:
    case 26:
        return TurnInPlace(op[0], op[1], op[2]);
    case 27:
        return Scalar(3.141592653589793);
    case 28:
        return MatrixTerm(LibraryMatrices().first);
    case 29:
        return Scalar(-op[0].GetScalar());
    case 30:
        return Term(Term::kConstantTerm, SFVec2f(op[0].GetScalar(), op[1].GetScalar()));
    case 31:
        return Term(Term::kConstantTerm,
                    SFVec3f(op[0].GetScalar(), op[1].GetScalar(), op[2].GetScalar()));
    case 32:
        return op[0].IsTrue() ? op[1] : op[2];
    case 33:
        return MatrixTerm(LibraryMatrices().second);
    case 34:
        return CopyFirstIntoSecond();
    case 35:
        return Term(Term::kConstantTerm, Term::kMarkerFormat, std::string(), &sMarker);
    case 36:
        return Extreme(op[0], op[1], false);
    default: // 37; OperandCount has refused every other code
        return Extreme(op[0], op[1], true);
    }
}

} // namespace zq::detail
