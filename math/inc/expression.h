// expression.h: the expression engine of the rule system: typed terms and postfix expressions
// with formal parameters.
#ifndef ZQMATH_EXPRESSION_H
#define ZQMATH_EXPRESSION_H

#include "cquat.h"
#include "sfmatrix.h"
#include "sfvec2f.h"
#include "sfvec3f.h"
#include "sfvec4f.h"
#include "zqexport.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CExpression;

/// The typed value cell of an expression: an operator, constant, variable, formal parameter or
/// expression reference holding one value format. Mismatched reads throw a plain int 0.
/// Vectors, quaternions and strings set here are heap copies that the term owns and a copy
/// duplicates; matrices, user objects and expressions are the caller's and are only shared.
class ZQMATH_API CExpressionTerm {
public:
    /// The type word: a plain kind in the low six bits and two flags above it.
    enum ERuleTermType : int {
        kOperatorTerm = 1,
        kConstantTerm = 2,
        kVariableTerm = 4,
        kFormalTerm = 16,
        kExpressionTerm = 32,
        kIntegerValueFlag = 64, ///< the slot holds a 32-bit integer instead of a double
        kOwnedValueFlag = 128   ///< the slot points to a block that the term deep-copies
    };
    /// The value format.
    enum ERuleTermFormat : int {
        kNoFormat = 0,
        kScalarFormat = 1,
        kVector2Format = 2,
        kVector3Format = 3,
        kVector4Format = 4,
        kMatrix4Format = 16,
        kQuatFormat = -4,
        kStringFormat = 1000,
        kUserObjectFormat = 1002,
        kMarkerFormat = -1 ///< a value that only says "true": counted true, never freed
    };

    /// An empty term: type word 0, no format, no value.
    CExpressionTerm();
    /// A scalar kept inline.
    CExpressionTerm(ERuleTermType type, double value);
    /// A scalar integer kept inline; kIntegerValueFlag is added to type. Operators are built
    /// with this one, the operator code as the value.
    CExpressionTerm(ERuleTermType type, int value);
    /// A heap copy of the value, owned: kOwnedValueFlag is added to type.
    CExpressionTerm(ERuleTermType type, const SFVec2f& value);
    CExpressionTerm(ERuleTermType type, const SFVec3f& value);
    CExpressionTerm(ERuleTermType type, const SFVec4f& value);
    CExpressionTerm(ERuleTermType type, const CQuat& value);
    /// The caller's matrix, shared and never freed here.
    CExpressionTerm(ERuleTermType type, SFMatrix* matrix);
    /// A named scalar without a value yet: how variables and formals are declared.
    CExpressionTerm(ERuleTermType type, const std::string& name);
    /// The caller's object of any format, shared and never freed here. A scalar format with
    /// a pointer makes a scalar read by reference (a double, or an int under kIntegerValueFlag).
    CExpressionTerm(ERuleTermType type, ERuleTermFormat format, const std::string& name,
                    void* object);
    /// A reference to an expression whose result has the given format (type kExpressionTerm).
    CExpressionTerm(ERuleTermFormat format, CExpression* expression);
    /// Copies everything; a block is duplicated only when the source's type word carries
    /// kOwnedValueFlag, else the slot (bound doubles included) is shared and size/count are 0.
    CExpressionTerm(const CExpressionTerm& other);
    /// As the copy, with no release step first: a block held before is simply let go of
    /// (freed unless a copy shares it); inline values and caller pointers are never freed.
    CExpressionTerm& operator=(const CExpressionTerm& other);
    ~CExpressionTerm();

    /// These throw int 0 unless the format matches; none converts between formats.
    double GetScalar() const;
    SFVec2f GetVector2() const;
    SFVec3f GetVector3() const;
    SFVec4f GetVector4() const;
    CQuat GetQuat() const;
    SFMatrix* GetMatrix4() const;
    /// The held string itself, not a copy.
    std::string* GetString() const;
    void* GetUserObject() const;
    /// Throws int 0 unless the type word is exactly kExpressionTerm.
    CExpression* GetExpression() const;

    /// The whole type word, flags included.
    ERuleTermType GetType() const;
    /// The type word's low six bits: the kind without flags.
    ERuleTermType GetPlainType() const;
    ERuleTermFormat GetFormat() const;
    /// The slot's first (low-order) 32 bits as a signed integer, whatever the format.
    int GetIntegerValue() const;

    /// Releases the value, then: an inline constant double, flags cleared, name emptied.
    void SetScalar(double value);
    /// An inline constant double; nothing released, name kept.
    void MakeScalarConstant(double value);
    /// Releases the value, then an owned constant copy (type word 130); name kept.
    void SetVector3(const SFVec3f& value);
    /// An owned constant copy (type word 130) without releasing first.
    void SetQuat(const CQuat& value);
    /// Releases the value, then an owned constant string (type word 130).
    void SetString(const std::string& value);
    /// The caller's matrix; the type word, size and count are not touched.
    void SetMatrix4(SFMatrix* matrix);
    /// Type word kExpressionTerm referring to the caller's expression.
    void SetExpression(ERuleTermFormat format, CExpression* expression);
    /// Binds a formal (type word exactly kFormalTerm, else throws int 0) to a new heap double,
    /// not flagged as owned: copies share it and it lives as long as one of them holds it.
    void BindFormalParameter(double value);
    void SetName(const std::string& name);
    std::string GetName() const;
    /// Empties the slot, freeing what the term allocated; inline values and caller pointers
    /// are never freed. Type word, format, size and count stay.
    void DropValue();

    /// These five compare the whole type word: a term with flags (130, 66, 65) is none of them.
    bool IsOperator() const;
    bool IsConstant() const;
    bool IsVariable() const;
    bool IsFormal() const;
    bool IsExpression() const;
    bool IsScalar() const;
    /// kIntegerValueFlag with the scalar format, whatever the kind.
    bool IsIntegerConstant() const;
    /// False without a value; true for the marker format; a scalar only when the type word is
    /// exactly kConstantTerm or kVariableTerm and the double is non-zero (NaN is false, and so
    /// is every integer term); a string when it is not empty; any other format false.
    bool IsTrue() const;
    bool IsFalse() const;

private:
    /// What the slot holds, so that a scalar read inline and one read by reference both answer
    /// correctly and a release frees only what the term allocated itself.
    enum ESlotContent : int {
        kNothing,
        kInlineValue,
        kAllocatedBlock,
        kCallerPointer,
        kExpressionPointer
    };

    /// Frees what the term allocated and empties the slot.
    void ReleaseValue();
    /// Holds a new block that this term allocated, of the given element size.
    void HoldBlock(std::shared_ptr<void> block, std::uint32_t size);
    /// Holds an inline value's bits.
    void HoldInline(std::uint64_t bits);
    /// Holds a pointer that is not the term's (null holds nothing).
    void HoldPointer(const void* pointer, ESlotContent content);
    /// Copies other's fields by the copy rule.
    void CopyFrom(const CExpressionTerm& other);
    /// The object a readable pointer slot points to, or null.
    const void* Referent() const;
    /// Referent() for a term of the given format; throws int 0 otherwise.
    const void* HeldObject(ERuleTermFormat format) const;
    /// A pointer slot that is not an allocated value of this term, for the given format.
    void* SharedPointer(ERuleTermFormat format) const;
    /// The scalar, inline or through the slot.
    double ScalarValue() const;

    ERuleTermType m_type;
    ERuleTermFormat m_format;
    std::uint64_t m_slot;
    std::string m_name;
    std::uint32_t m_elementSize;
    std::uint32_t m_elementCount;
    ESlotContent m_content;
    /// The block the term allocated; shared by copies only where the slot is shared.
    std::shared_ptr<void> m_block;
};

/// One expression of the rule system: a stack of terms in postfix order (operands pushed before
/// their operator: "a b op" is "a op b"), a name and an optional formals list that makes it a
/// small function bound from text. Copies share the formals list.
///
/// Evaluation: a term whose plain kind is not kOperatorTerm is its own value, except that a
/// formal takes the value of the formal of the same name in the formals list, if there is one.
/// An operator term (plain kind kOperatorTerm, built with the int constructor) carries its code;
/// its operands are the sub-expressions below it, the last operand ending just below it. A
/// missing operand, an operand of the wrong format, a null matrix or expression, an unknown code
/// or expression references nested too deep throw int 0. Results are constants (scalars as
/// doubles, so that IsTrue reads them; vectors and quaternions owned; matrices the caller's).
/// M1 and M2 are the two matrices last passed to Evaluate.
///
///  Code   Operands           Result
///  1      a b                a + b, component-wise, a and b both scalars or both 2/3/4-vectors
///  2      a b                a - b, the same
///  3      a b                a * b, the same
///  4      u v                u / v component-wise, both 2-, 3- or 4-vectors (no scalars)
///  5      x                  sin x
///  6      x                  tan x
///  7      -                  GetMarkedTime() / 100 in unsigned arithmetic, as a double
///  8      x                  cos x
///  9      x                  sqrt x
///  10     x                  |x|
///  11     x                  atan x
///  12     a b                1.0 when equal, else 0.0: scalars by ==, 2-vectors when the norm of
///                            a - b is exactly 0.0, 3- and 4-vectors by their ==; any other pair
///                            (other or mixed formats) when a.IsTrue() == b.IsTrue()
///  13     a b                1.0 when not equal by the same rules (3-, 4-vectors by !=), else 0.0
///  14     v                  squared length of a 3- or 4-vector (Magnitude), x * x of a scalar
///  15     x y                pow(x, y)
///  16     a                  1.0 when a.IsFalse(), else 0.0 (logical not, any format)
///  17     x y z w            the quaternion CQuat(x, y, z, w)
///  18     u v                u . v, 3-vectors
///  19     u v                u x v, 3-vectors
///  20     M                  M's position (row 3: elements 12, 13, 14) as a 3-vector
///  21     M                  M's view vector (row 2)
///  22     e                  the result of the referenced expression evaluated with M1, M2
///  23-26  M v s              turns M in place by the angles v * s about x, then y, then z
///                            (PostRotateX/Y/Z) keeping its position; yields M
///  27     -                  pi
///  28     -                  M1
///  29     x                  -x
///  30     x y                the 2-vector (x, y)
///  31     x y z              the 3-vector (x, y, z)
///  32     c a b              a when c.IsTrue(), else b (any formats)
///  33     -                  M2
///  34     -                  copies M1 into M2 (SFMatrix::operator=); yields M2
///  35     -                  a marker term (format kMarkerFormat): true and nothing else
///  36     x y                the smaller; a tie or NaN gives x
///  37     x y                the greater; a tie or NaN gives x
class ZQMATH_API CExpression {
public:
    /// Empty stack, no formals, empty name.
    CExpression();
    /// Copies the terms by the term copy rule and the name; shares the formals list.
    CExpression(const CExpression& other);
    CExpression& operator=(const CExpression& other);
    /// The formals list is not touched (a list made by ParseFormals dies with its last user).
    ~CExpression();

    /// Pushes a copy of term; a full stack grows to size + max(size, 1).
    void PushTerm(const CExpressionTerm& term);
    /// Removes the top term and returns a copy; throws int 0 on an empty stack.
    CExpressionTerm PopTerm();
    void SetName(const std::string& name);
    std::string GetName() const;
    /// Uses the caller's list (no copy), which stays the caller's; null makes it non-parametric.
    void SetFormals(std::vector<CExpressionTerm>* formals);
    /// The formals list, or null.
    std::vector<CExpressionTerm>* GetFormals() const;
    /// True when there is a formals list, even an empty one.
    bool IsParametric() const;
    /// Reads "name(p1,p2,...)": the name before the first "(", one formal per comma-separated
    /// part; the last character is taken as ")" unchecked and blanks are kept. A middle formal's
    /// name runs on past its comma (f(a,b,c) gives a, "b,c", c), as rule texts have always had
    /// it. Without "(" the expression becomes non-parametric and the name stays.
    void ParseFormals(const std::string& text);
    /// Binds the formals in order from "(n1,n2,...)" at pos: a number is a run of digits and
    /// ". + - e E" (at most 63 characters, else the binding fails), ended by any one other
    /// character. Returns the formal count and moves pos past the last number's end; returns 0
    /// when text[pos] is not "(" (changing nothing) or when ")" or an over-long number comes
    /// before every formal is bound (then every binding is cleared). Past the "(" test, bound
    /// receives the number of formals left bound. Reading past the text throws
    /// std::out_of_range; a list member that is not exactly a formal, or no list, throws int 0.
    int BindFormalParameters(std::string text, int& pos, int& bound);
    /// Empties every formal's slot.
    void ClearAllFormalBindings();
    /// The top term's format, kNoFormat for an empty stack.
    CExpressionTerm::ERuleTermFormat GetExpressionResultFormat() const;
    /// Matches the string this expression evaluates to (with M1, M2) at pos of the subject's
    /// string, then binds the formals from the "(...)" after it. Returns the characters
    /// consumed, 0 for no match (pos outside the subject included). Once its pattern has
    /// matched, a parametric expression binds and then lets go of its formals list, whether
    /// every formal was bound or not (copies keep it). A subject or result that is not
    /// a string throws int 0; a subject that ends right after the pattern of a parametric
    /// expression throws std::out_of_range.
    int Matches(const CExpressionTerm& subject, int pos);
    /// Stores first and second as M1 and M2 for the whole library and evaluates the top term;
    /// an empty stack gives the integer constant 0 (type word 66).
    CExpressionTerm Evaluate(SFMatrix* first, SFMatrix* second) const;

private:
    /// The value of the sub-expression that ends at index; index is left just below it.
    CExpressionTerm Evaluate(int& index) const;

    std::vector<CExpressionTerm> m_stack;
    std::shared_ptr<std::vector<CExpressionTerm>> m_formals;
    std::string m_name;
};

#endif
