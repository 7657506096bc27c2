// libFuzzer target: the text entry points of CExpression and evaluation of random term stacks.
// Every input must either work or fail with int 0 or std::out_of_range; anything else (a
// crash, a sanitizer report, another exception) is a finding.
#include <expression.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

using Term = CExpressionTerm;

/// Objects that generated terms may point to: they outlive every expression of one input.
struct Referents {
    SFMatrix first;
    SFMatrix second;
    double scalar = 1.5;
    std::string text = "abc";
    CExpression inner;
};

/// One term of a random kind: a value of any format, an operator (valid code or not), a
/// formal, or a reference to the inner expression or to the expression being built.
Term RandomTerm(FuzzedDataProvider& in, Referents& r, CExpression& self) {
    const auto type = static_cast<Term::ERuleTermType>(in.ConsumeIntegral<std::uint8_t>());
    const double x = in.ConsumeFloatingPoint<double>();
    switch (in.ConsumeIntegralInRange(0, 13)) {
    case 0:
        return Term(Term::kOperatorTerm, in.ConsumeIntegralInRange(-1, 39));
    case 1:
        return Term(Term::kConstantTerm, x);
    case 2:
        return Term(type, in.ConsumeIntegral<int>());
    case 3:
        return Term(type, SFVec2f(x, 2.0));
    case 4:
        return Term(type, SFVec3f(x, -1.0, 0.5));
    case 5:
        return Term(type, SFVec4f(x, 0.0, 1.0, 2.0));
    case 6:
        return Term(type, CQuat(0.0, x, 0.0, 1.0));
    case 7:
        return Term(type, in.ConsumeBool() ? &r.first : &r.second);
    case 8:
        return Term(Term::kFormalTerm, in.ConsumeRandomLengthString(4));
    case 9: {
        Term t(type, in.ConsumeRandomLengthString(8));
        t.SetString(in.ConsumeRandomLengthString(8));
        return t;
    }
    case 10:
        return Term(Term::kVariableTerm, Term::kScalarFormat, "v", &r.scalar);
    case 11:
        return Term(Term::kConstantTerm, Term::kStringFormat, "s", &r.text);
    case 12:
        return Term(static_cast<Term::ERuleTermFormat>(in.ConsumeIntegralInRange(-4, 4)),
                    in.ConsumeBool() ? &r.inner : &self);
    default:
        return Term();
    }
}

/// A random stack, with formals declared or bound from text now and then.
void BuildExpression(FuzzedDataProvider& in, Referents& r, CExpression& e) {
    const int count = in.ConsumeIntegralInRange(0, 40);
    for (int i = 0; i < count; ++i) {
        e.PushTerm(RandomTerm(in, r, e));
    }
    if (in.ConsumeBool()) {
        e.ParseFormals(in.ConsumeRandomLengthString(24));
    }
}

/// Exercises one expression: evaluation, binding, matching, copies and popping.
void Exercise(FuzzedDataProvider& in, Referents& r, CExpression& e) {
    try {
        (void)e.Evaluate(&r.first, &r.second).IsTrue();
    } catch (int) {
    }
    const CExpression copy = e;
    try {
        int pos = in.ConsumeIntegralInRange(-2, 30);
        int bound = 0;
        if (e.IsParametric()) {
            e.BindFormalParameters(in.ConsumeRandomLengthString(40), pos, bound);
        }
        (void)e.Evaluate(&r.first, &r.second);
    } catch (int) {
    } catch (const std::out_of_range&) {
    }
    try {
        CExpression pattern = copy;
        pattern.PushTerm(Term(Term::kConstantTerm, 1));
        pattern.PopTerm();
        Term subject;
        subject.SetString(in.ConsumeRandomLengthString(40));
        pattern.Matches(subject, in.ConsumeIntegralInRange(-2, 40));
    } catch (int) {
    } catch (const std::out_of_range&) {
    }
    e.ClearAllFormalBindings();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    Referents r;
    r.first.Identity();
    r.second.Zero();
    r.inner.PushTerm(Term(Term::kConstantTerm, 2.0));
    CExpression e;
    BuildExpression(in, r, e);
    Exercise(in, r, e);
    return 0;
}
