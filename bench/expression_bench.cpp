// Evaluate of a typical rule expression: how far the camera of M1 is from a point, scaled, plus
// a sine: sqrt(|position(M1) - p|²) * 0.5 + sin 0.3, as eleven postfix terms.
#include "expression.h"
#include "sfmatrix.h"

#include <benchmark/benchmark.h>

namespace {

using Term = CExpressionTerm;

/// An operator term with its code.
Term Operator(int code) {
    return Term(Term::kOperatorTerm, code);
}

void Evaluate(benchmark::State& state) {
    CExpression e;
    const Term terms[] = {Operator(28), // M1
                          Operator(20), // its position
                          Term(Term::kConstantTerm, SFVec3f(10.0, 2.0, -5.0)),
                          Operator(2),  // minus
                          Operator(14), // squared length
                          Operator(9),  // sqrt
                          Term(Term::kConstantTerm, 0.5),
                          Operator(3), // times
                          Term(Term::kConstantTerm, 0.3),
                          Operator(5),  // sin
                          Operator(1)}; // plus
    for (const Term& t : terms) {
        e.PushTerm(t);
    }
    SFMatrix camera;
    camera.Identity();
    camera.Translate(1.0, 2.0, 3.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(e.Evaluate(&camera, &camera).GetScalar());
    }
}

} // namespace

BENCHMARK(Evaluate)->Name("Evaluate/zqmath");

BENCHMARK_MAIN();
