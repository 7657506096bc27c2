// The expression engine: terms, expressions, formal parameters and the operators.
#include <expression.h>
#include <mathdll.h>

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Term = CExpressionTerm;

const double kPi = 3.141592653589793;

/// True when f throws the engine's plain int 0.
template <class F>
bool ThrowsZero(F f) {
    try {
        f();
    } catch (int e) {
        return e == 0;
    }
    return false;
}

Term Op(int code) {
    return Term(Term::kOperatorTerm, code);
}

Term Num(double x) {
    return Term(Term::kConstantTerm, x);
}

Term Text(const std::string& s) {
    Term t;
    t.SetString(s);
    return t;
}

CExpression Expr(std::initializer_list<Term> terms) {
    CExpression e;
    for (const Term& t : terms) {
        e.PushTerm(t);
    }
    return e;
}

Term Evaluated(std::initializer_list<Term> terms, SFMatrix* m1 = nullptr, SFMatrix* m2 = nullptr) {
    return Expr(terms).Evaluate(m1, m2);
}

double Scalar(std::initializer_list<Term> terms) {
    return Evaluated(terms).GetScalar();
}

} // namespace

TEST(TermTypeWords, FlagsMakeKindTestsFailButPlainTypeHolds) {
    const Term integer(Term::kConstantTerm, 7);
    EXPECT_EQ(integer.GetType(), 66);
    EXPECT_FALSE(integer.IsConstant());
    EXPECT_TRUE(integer.IsIntegerConstant());
    EXPECT_EQ(integer.GetScalar(), 7.0);
    const Term vector(Term::kConstantTerm, SFVec3f(1, 2, 3));
    EXPECT_EQ(vector.GetType(), 130);
    EXPECT_EQ(vector.GetPlainType(), Term::kConstantTerm);
    EXPECT_FALSE(vector.IsConstant());
    EXPECT_TRUE(ThrowsZero([&] { vector.GetScalar(); }));
    EXPECT_TRUE(ThrowsZero([&] { vector.GetVector2(); }));
    const Term op = Op(12);
    EXPECT_EQ(op.GetType(), 65);
    EXPECT_FALSE(op.IsOperator());
    EXPECT_EQ(op.GetIntegerValue(), 12);
    const Term formal(Term::kFormalTerm, std::string("x"));
    EXPECT_TRUE(formal.IsFormal());
    EXPECT_EQ(formal.GetFormat(), Term::kScalarFormat);
    EXPECT_EQ(formal.GetName(), "x");
    // A double constant is not an integer one, and the integer rides in the low 32 bits.
    EXPECT_FALSE(Num(7.0).IsIntegerConstant());
    EXPECT_EQ(Term(Term::kConstantTerm, -5).GetIntegerValue(), -5);
}

TEST(TermTruth, InlineAndReferencedScalarsByFormat) {
    EXPECT_TRUE(Term().IsFalse());
    EXPECT_TRUE(Num(1.0).IsTrue()); // its low 32 bits are zero, yet it holds a value
    EXPECT_FALSE(Num(0.0).IsTrue());
    EXPECT_FALSE(Num(std::numeric_limits<double>::quiet_NaN()).IsTrue());
    EXPECT_FALSE(Term(Term::kConstantTerm, 5).IsTrue()); // integer terms never are
    double speed = 0.0;
    const Term variable(Term::kVariableTerm, Term::kScalarFormat, "speed", &speed);
    EXPECT_FALSE(variable.IsTrue());
    speed = -2.5;
    EXPECT_TRUE(variable.IsTrue());
    EXPECT_EQ(variable.GetScalar(), -2.5);
    int marker = 0;
    EXPECT_TRUE(Term(Term::kConstantTerm, Term::kMarkerFormat, "", &marker).IsTrue());
    EXPECT_FALSE(Term(Term::kConstantTerm, Term::kMarkerFormat, "", nullptr).IsTrue());
    EXPECT_TRUE(Text("x").IsTrue());
    EXPECT_FALSE(Text("").IsTrue());
    EXPECT_FALSE(Term(Term::kConstantTerm, SFVec3f(1, 1, 1)).IsTrue());
    Term formal(Term::kFormalTerm, std::string("x"));
    formal.BindFormalParameter(3.0);
    EXPECT_EQ(formal.GetScalar(), 3.0);
    EXPECT_FALSE(formal.IsTrue()); // only constants and variables are read for truth
}

TEST(TermCopy, OwnedBlocksDuplicatedEverythingElseShared) {
    auto* original = new Term(Term::kConstantTerm, SFVec3f(1, 2, 3));
    Term copy(*original);
    EXPECT_EQ(copy.GetType(), 130);
    delete original;
    EXPECT_EQ(copy.GetVector3(), SFVec3f(1, 2, 3));
    SFMatrix m;
    m.Identity();
    {
        Term a(Term::kConstantTerm, &m);
        Term b = a;
        EXPECT_EQ(b.GetMatrix4(), &m);
    }
    // A flagged term re-pointed at the caller's matrix frees it neither in copies nor at death.
    Term vector(Term::kConstantTerm, SFVec2f(1, 2));
    vector.SetMatrix4(&m);
    EXPECT_EQ(vector.GetType(), 130);
    EXPECT_EQ(Term(vector).GetMatrix4(), &m);
    // A flagged inline double and a dropped owned slot are shared as they are.
    const Term flagged(static_cast<Term::ERuleTermType>(130), 2.5);
    EXPECT_EQ(Term(flagged).GetScalar(), 2.5);
    Term dropped(Term::kConstantTerm, SFVec4f(1, 2, 3, 4));
    dropped.DropValue();
    EXPECT_TRUE(ThrowsZero([&] { Term(dropped).GetVector4(); }));
    // Copies of a bound formal share its double; a new binding does not reach them.
    Term formal(Term::kFormalTerm, std::string("x"));
    formal.BindFormalParameter(1.0);
    Term shared;
    shared = formal;
    formal.BindFormalParameter(2.0);
    EXPECT_EQ(shared.GetScalar(), 1.0);
    EXPECT_EQ(formal.GetScalar(), 2.0);
    // Strings are copied as strings.
    Term text = Text("hello");
    Term textCopy(text);
    text.GetString()->assign("changed");
    EXPECT_EQ(*textCopy.GetString(), "hello");
}

TEST(TermSetters, EachKeepsOrClearsWhatItSays) {
    Term t(Term::kVariableTerm, std::string("named"));
    t.MakeScalarConstant(4.0);
    EXPECT_EQ(t.GetName(), "named");
    t.SetVector3(SFVec3f(1, 2, 3));
    EXPECT_EQ(t.GetType(), 130);
    EXPECT_EQ(t.GetName(), "named");
    t.SetQuat(CQuat(0, 0, 1, 0));
    EXPECT_EQ(t.GetFormat(), Term::kQuatFormat);
    EXPECT_EQ(t.GetQuat().z, 1.0);
    t.SetScalar(9.0);
    EXPECT_EQ(t.GetType(), Term::kConstantTerm);
    EXPECT_EQ(t.GetName(), "");
    EXPECT_EQ(t.GetScalar(), 9.0);
    CExpression e;
    t.SetExpression(Term::kStringFormat, &e);
    EXPECT_TRUE(t.IsExpression());
    EXPECT_EQ(t.GetExpression(), &e);
    EXPECT_TRUE(ThrowsZero([&] { t.GetString(); })); // an expression is no string
    EXPECT_TRUE(ThrowsZero([&] { t.BindFormalParameter(1.0); }));
    EXPECT_TRUE(ThrowsZero([] { Term(Term::kConstantTerm, 1.0).GetExpression(); }));
}

TEST(ParseFormals, MiddleNamesRunOnAndListsStayEvenWhenEmpty) {
    CExpression e;
    e.ParseFormals("f(a,b,c)");
    EXPECT_EQ(e.GetName(), "f");
    ASSERT_TRUE(e.IsParametric());
    std::vector<std::string> names;
    for (const Term& formal : *e.GetFormals()) {
        EXPECT_EQ(formal.GetType(), Term::kFormalTerm);
        names.push_back(formal.GetName());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b,c", "c"}));
    e.ParseFormals("speed");
    EXPECT_EQ(e.GetName(), "f");
    EXPECT_FALSE(e.IsParametric());
    e.ParseFormals("g()");
    EXPECT_TRUE(e.IsParametric());
    EXPECT_TRUE(e.GetFormals()->empty());
    e.ParseFormals("h( x ,y]"); // blanks kept, the last character dropped unchecked
    EXPECT_EQ((*e.GetFormals())[0].GetName(), " x ");
    EXPECT_EQ((*e.GetFormals())[1].GetName(), "y");
    e.ParseFormals("k(");
    EXPECT_TRUE(e.GetFormals()->empty());
}

TEST(BindFormals, NumbersFromTextOrNothing) {
    CExpression e;
    e.ParseFormals("f(x,y)");
    const CExpression copy = e; // shares the list and so the bindings
    int pos = 0;
    int bound = -1;
    EXPECT_EQ(e.BindFormalParameters("(1.5,2e3)", pos, bound), 2);
    EXPECT_EQ(pos, 9);
    EXPECT_EQ(bound, 2);
    EXPECT_EQ((*copy.GetFormals())[0].GetScalar(), 1.5);
    EXPECT_EQ((*copy.GetFormals())[1].GetScalar(), 2000.0);
    // "(3 4)" and "(3;4)": any character separates.
    pos = 0;
    EXPECT_EQ(e.BindFormalParameters("(3;-4)", pos, bound), 2);
    EXPECT_EQ((*e.GetFormals())[1].GetScalar(), -4.0);
    // Too early a ")" clears every binding and leaves pos.
    pos = 0;
    EXPECT_EQ(e.BindFormalParameters("(1)", pos, bound), 0);
    EXPECT_EQ(pos, 0);
    EXPECT_EQ(bound, 0);
    EXPECT_EQ((*e.GetFormals())[0].GetIntegerValue(), 0); // the slot is empty again
    EXPECT_EQ(e.BindFormalParameters("x(1,2)", pos, bound), 0);
    // An over-long number fails the binding instead of overrunning a buffer.
    EXPECT_EQ(e.BindFormalParameters("(" + std::string(100, '1') + ",2)", pos, bound), 0);
    EXPECT_THROW(e.BindFormalParameters("(1,2", pos, bound), std::out_of_range);
    pos = 6;
    EXPECT_THROW(e.BindFormalParameters("(1,2)", pos, bound), std::out_of_range);
    pos = -1;
    EXPECT_THROW(e.BindFormalParameters("(1,2)", pos, bound), std::out_of_range);
    // A caller's list holding a non-formal.
    std::vector<Term> list{Num(1.0)};
    e.SetFormals(&list);
    pos = 0;
    EXPECT_TRUE(ThrowsZero([&] { e.BindFormalParameters("(1)", pos, bound); }));
    e.SetFormals(nullptr);
    EXPECT_TRUE(ThrowsZero([&] { e.BindFormalParameters("(1)", pos, bound); }));
}

TEST(Matches, PatternThenArgumentsAndTheListIsLetGo) {
    CExpression move = Expr({Text("move")});
    EXPECT_EQ(move.Matches(Text("a move"), 2), 4);
    EXPECT_EQ(move.Matches(Text("a move"), 1), 0);
    EXPECT_EQ(move.Matches(Text("a mov"), 2), 0);
    EXPECT_EQ(move.Matches(Text("move"), 9), 0);
    EXPECT_EQ(move.Matches(Text("move"), -1), 0);
    EXPECT_TRUE(ThrowsZero([&] { move.Matches(Num(1.0), 0); }));
    EXPECT_TRUE(ThrowsZero([] { Expr({Num(1.0)}).Matches(Text("1"), 0); }));

    move.ParseFormals("move(dx,dy)");
    const CExpression keeper = move;
    EXPECT_EQ(move.Matches(Text("move(1,-2) now"), 0), 10);
    EXPECT_FALSE(move.IsParametric());
    EXPECT_EQ((*keeper.GetFormals())[1].GetScalar(), -2.0); // the copy still holds the list
    move.ParseFormals("move(dx,dy)");
    EXPECT_EQ(move.Matches(Text("move(1)"), 0), 0);
    EXPECT_EQ(move.GetFormals(), nullptr);
    move.ParseFormals("move()");
    EXPECT_EQ(move.Matches(Text("move!"), 0), 0); // no "(" after the pattern
    move.ParseFormals("move()");
    EXPECT_EQ(move.Matches(Text("move()"), 0), 5); // no formal, no number: only "(" is read
    move.ParseFormals("move(dx)");
    EXPECT_THROW(move.Matches(Text("move"), 0), std::out_of_range);
}

TEST(ExpressionStack, PushPopCopiesAndEmptyCases) {
    CExpression e;
    EXPECT_EQ(e.GetExpressionResultFormat(), Term::kNoFormat);
    const Term empty = e.Evaluate(nullptr, nullptr);
    EXPECT_EQ(empty.GetType(), 66);
    EXPECT_EQ(empty.GetIntegerValue(), 0);
    EXPECT_TRUE(ThrowsZero([&] { e.PopTerm(); }));
    e.PushTerm(Num(1.0));
    e.PushTerm(Term(Term::kConstantTerm, SFVec2f(1, 2)));
    for (int i = 0; i < 5; ++i) {
        e.PushTerm(Num(i)); // owned blocks survive the stack's growth
    }
    e.PushTerm(Term(Term::kConstantTerm, SFVec2f(1, 2)));
    CExpression copy = e;
    CExpression assigned =
        Expr({Num(1), Num(2), Num(3), Num(4), Num(5), Num(6), Num(7), Num(8), Num(9), Num(10)});
    assigned = e;
    EXPECT_EQ(e.PopTerm().GetVector2(), SFVec2f(1, 2));
    EXPECT_EQ(e.GetExpressionResultFormat(), Term::kScalarFormat);
    EXPECT_EQ(copy.GetExpressionResultFormat(), Term::kVector2Format);
    EXPECT_EQ(assigned.PopTerm().GetVector2(), SFVec2f(1, 2));
}

TEST(Operators, PostfixOrderAndScalarArithmetic) {
    EXPECT_EQ(Scalar({Num(10), Num(4), Op(2)}), 6.0); // a b - is a - b
    EXPECT_EQ(Scalar({Num(1), Num(2), Op(1), Num(3), Op(3)}), 9.0);
    EXPECT_EQ(Scalar({Num(10), Num(1), Num(3), Op(1), Op(2)}), 6.0);
    EXPECT_EQ(Scalar({Term(Term::kConstantTerm, 2), Num(0.5), Op(3)}), 1.0);
    EXPECT_DOUBLE_EQ(Scalar({Num(kPi / 2), Op(5)}), 1.0);
    EXPECT_NEAR(Scalar({Num(kPi / 4), Op(6)}), 1.0, 1e-15);
    MarkClockTime();
    EXPECT_EQ(Scalar({Op(7)}), static_cast<double>(GetMarkedTime() / 100));
    EXPECT_EQ(Scalar({Num(0), Op(8)}), 1.0);
    EXPECT_EQ(Scalar({Num(9), Op(9)}), 3.0);
    EXPECT_EQ(Scalar({Num(-2), Op(10)}), 2.0);
    EXPECT_DOUBLE_EQ(Scalar({Num(1), Op(11)}), kPi / 4);
    EXPECT_EQ(Scalar({Num(2), Num(10), Op(15)}), 1024.0);
    EXPECT_EQ(Scalar({Op(27)}), kPi);
    EXPECT_EQ(Scalar({Num(3), Op(29)}), -3.0);
    EXPECT_EQ(Scalar({Num(3), Num(-1), Op(36)}), -1.0);
    EXPECT_EQ(Scalar({Num(3), Num(-1), Op(37)}), 3.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Scalar({Num(3), Num(nan), Op(36)}), 3.0);
    EXPECT_TRUE(std::isnan(Scalar({Num(nan), Num(3), Op(37)})));
    // A long left-leaning chain is evaluated without deep recursion.
    CExpression sum = Expr({Num(0)});
    for (int i = 0; i < 100000; ++i) {
        sum.PushTerm(Num(1));
        sum.PushTerm(Op(1));
    }
    EXPECT_EQ(sum.Evaluate(nullptr, nullptr).GetScalar(), 100000.0);
}

TEST(Operators, VectorsQuaternionsAndComparisons) {
    const Term u(Term::kConstantTerm, SFVec3f(1, 2, 2));
    const Term v(Term::kConstantTerm, SFVec3f(2, 4, 8));
    EXPECT_EQ(Evaluated({u, v, Op(1)}).GetVector3(), SFVec3f(3, 6, 10));
    EXPECT_EQ(Evaluated({u, v, Op(3)}).GetType(), 130);
    EXPECT_EQ(Evaluated({v, u, Op(4)}).GetVector3(), SFVec3f(2, 2, 4));
    const Term p(Term::kConstantTerm, SFVec2f(6, 8));
    EXPECT_EQ(Evaluated({p, Term(Term::kConstantTerm, SFVec2f(2, 4)), Op(4)}).GetVector2(),
              SFVec2f(3, 2));
    const Term q(Term::kConstantTerm, SFVec4f(1, 2, 3, 4));
    EXPECT_EQ(Evaluated({q, q, Op(2)}).GetVector4(), SFVec4f(0, 0, 0, 0));
    EXPECT_EQ(Scalar({u, Op(14)}), 9.0);
    EXPECT_EQ(Scalar({q, Op(14)}), 30.0);
    EXPECT_EQ(Scalar({Num(-3), Op(14)}), 9.0);
    EXPECT_EQ(Scalar({u, v, Op(18)}), 26.0);
    EXPECT_EQ(Evaluated({Term(Term::kConstantTerm, SFVec3f(1, 0, 0)),
                         Term(Term::kConstantTerm, SFVec3f(0, 1, 0)), Op(19)})
                  .GetVector3(),
              SFVec3f(0, 0, 1));
    EXPECT_EQ(Evaluated({Num(1), Num(2), Op(30)}).GetVector2(), SFVec2f(1, 2));
    EXPECT_EQ(Evaluated({Num(1), Num(2), Num(3), Op(31)}).GetVector3(), SFVec3f(1, 2, 3));
    const CQuat quat = Evaluated({Num(1), Num(2), Num(3), Num(4), Op(17)}).GetQuat();
    EXPECT_EQ(SFVec4f(quat.x, quat.y, quat.z, quat.w), SFVec4f(1, 2, 3, 4));
    // 2-vectors compare exactly, not with SFVec2f's tolerance; 3-vectors keep NaN == NaN.
    const Term almost(Term::kConstantTerm, SFVec2f(6, 8.000001));
    EXPECT_EQ(Scalar({p, almost, Op(12)}), 0.0);
    EXPECT_EQ(Scalar({p, almost, Op(13)}), 1.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Term n(Term::kConstantTerm, SFVec3f(nan, 0, 0));
    EXPECT_EQ(Scalar({n, Term(Term::kConstantTerm, SFVec3f(1, 0, 0)), Op(12)}), 1.0);
    EXPECT_EQ(Scalar({Num(2), Num(2), Op(12)}), 1.0);
    EXPECT_EQ(Scalar({Text("a"), Num(1), Op(12)}), 1.0); // other pairs compare truth
    EXPECT_EQ(Scalar({Text(""), Num(1), Op(13)}), 1.0);
    EXPECT_EQ(Scalar({Num(0), Op(16)}), 1.0);
    EXPECT_EQ(Scalar({Text("x"), Op(16)}), 0.0);
    EXPECT_EQ(*Evaluated({Num(1), Text("yes"), Text("no"), Op(32)}).GetString(), "yes");
    EXPECT_EQ(
        *Evaluated({Term(Term::kConstantTerm, 1), Text("yes"), Text("no"), Op(32)}).GetString(),
        "no"); // an integer is never true
    const Term marker = Evaluated({Op(35)});
    EXPECT_EQ(marker.GetFormat(), Term::kMarkerFormat);
    EXPECT_TRUE(marker.IsTrue());
}

TEST(Operators, MatricesAndExpressionReferences) {
    SFMatrix m1;
    SFMatrix m2;
    m1.Identity();
    m1.SetViewVector(SFVec3f(0, 0, -1));
    m1.SetPosition(SFVec3f(5, 6, 7));
    m2.Zero();
    EXPECT_EQ(Evaluated({Op(28)}, &m1, &m2).GetMatrix4(), &m1);
    EXPECT_EQ(Evaluated({Op(33)}, &m1, &m2).GetMatrix4(), &m2);
    EXPECT_EQ(Evaluated({Op(28), Op(20)}, &m1, &m2).GetVector3(), SFVec3f(5, 6, 7));
    EXPECT_EQ(Evaluated({Op(28), Op(21)}, &m1, &m2).GetVector3(), SFVec3f(0, 0, -1));
    EXPECT_EQ(Evaluated({Op(34)}, &m1, &m2).GetMatrix4(), &m2);
    EXPECT_EQ(m2 == m1, 1);
    // 23 to 26: a quarter turn about y given in degrees, at the matrix's own position.
    for (int code = 23; code <= 26; ++code) {
        SFMatrix m;
        m.Identity();
        m.SetPosition(SFVec3f(5, 6, 7));
        const Term degrees(Term::kConstantTerm, SFVec3f(0, 90, 0));
        EXPECT_EQ(Evaluated({Term(Term::kConstantTerm, &m), degrees, Num(kPi / 180), Op(code)})
                      .GetMatrix4(),
                  &m);
        EXPECT_EQ(m.GetPosition(), SFVec3f(5, 6, 7)) << code;
        EXPECT_NEAR(std::fabs(m.GetLeftVector().z), 1.0, 1e-6) << code;
        EXPECT_NEAR(m.GetLeftVector().x, 0.0, 1e-6) << code;
    }
    // 22 evaluates the referenced expression with the current matrices.
    CExpression inner = Expr({Op(28), Op(20)});
    EXPECT_EQ(Evaluated({Term(Term::kVector3Format, &inner), Op(22)}, &m1, &m2).GetVector3(),
              SFVec3f(5, 6, 7));
    CExpression self;
    self.PushTerm(Term(Term::kScalarFormat, &self));
    self.PushTerm(Op(22));
    EXPECT_TRUE(ThrowsZero([&] { self.Evaluate(nullptr, nullptr); }));
}

TEST(Operators, FormalsTakeTheirBoundValues) {
    CExpression f = Expr({Term(Term::kFormalTerm, std::string("x")),
                          Term(Term::kFormalTerm, std::string("y")), Op(2)});
    f.ParseFormals("f(x,y)");
    int pos = 0;
    int bound = 0;
    f.BindFormalParameters("(10,4)", pos, bound);
    EXPECT_EQ(f.Evaluate(nullptr, nullptr).GetScalar(), 6.0);
    f.ClearAllFormalBindings();
    EXPECT_EQ(f.Evaluate(nullptr, nullptr).GetScalar(), 0.0); // unbound formals read 0.0
}

TEST(Operators, BadOperandsAndCodesThrowZero) {
    SFMatrix m;
    m.Identity();
    const Term v2(Term::kConstantTerm, SFVec2f(1, 2));
    const Term v3(Term::kConstantTerm, SFVec3f(1, 2, 3));
    const std::vector<std::vector<Term>> bad{{Num(1), Op(1)},
                                             {Op(3)},
                                             {Num(1), v2, Op(1)},
                                             {Num(4), Num(2), Op(4)},
                                             {v2, v3, Op(4)},
                                             {Text("x"), Op(5)},
                                             {v2, Op(14)},
                                             {v3, Num(1), Op(18)},
                                             {Num(1), Op(20)},
                                             {Op(28)},
                                             {Num(1), Op(22)},
                                             {Op(0)},
                                             {Op(38)},
                                             {Op(-1)},
                                             {Term(Term::kOperatorTerm, 7.0)},
                                             {Text("x"), Text("y"), Op(1)}};
    for (const std::vector<Term>& terms : bad) {
        CExpression e;
        for (const Term& t : terms) {
            e.PushTerm(t);
        }
        EXPECT_TRUE(ThrowsZero([&] { e.Evaluate(nullptr, nullptr); })) << terms.size();
    }
    EXPECT_TRUE(ThrowsZero([&] { Evaluated({Op(33)}, &m, nullptr); }));
    EXPECT_TRUE(ThrowsZero([&] { Evaluated({Op(34)}, &m, nullptr); }));
}
