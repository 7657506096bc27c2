// CExpressionTerm: the typed value cell of the expression engine.
#include "expression.h"

#include <cstring>

namespace {

using Term = CExpressionTerm;

/// The 64-bit slot as a double.
std::uint64_t BitsOfDouble(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double DoubleOfBits(std::uint64_t bits) {
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// An integer lives in the slot's first (low-order) 32 bits, as on the 32-bit original.
std::uint64_t BitsOfInteger(int value) {
    return static_cast<std::uint32_t>(value);
}

int IntegerOfBits(std::uint64_t bits) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
}

void* PointerOfBits(std::uint64_t bits) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(bits));
}

/// A new block holding a copy of value.
template <class T>
std::shared_ptr<void> NewBlock(const T& value) {
    return std::make_shared<T>(value);
}

/// A copy of the owned block of a term of the given format. A bound double is never flagged as
/// owned, so the blocks copied here are the vectors, the quaternion and the string.
std::shared_ptr<void> CopyBlock(Term::ERuleTermFormat format, const void* block) {
    switch (format) {
    case Term::kVector2Format:
        return NewBlock(*static_cast<const SFVec2f*>(block));
    case Term::kVector3Format:
        return NewBlock(*static_cast<const SFVec3f*>(block));
    case Term::kVector4Format:
        return NewBlock(*static_cast<const SFVec4f*>(block));
    case Term::kQuatFormat:
        return NewBlock(*static_cast<const CQuat*>(block));
    default:
        return NewBlock(*static_cast<const std::string*>(block));
    }
}

/// A new quaternion block, default-constructed and then assigned, so every field is q's.
std::shared_ptr<void> NewQuatBlock(const CQuat& q) {
    auto block = std::make_shared<CQuat>();
    *block = q;
    return block;
}

/// The type word with a flag added.
Term::ERuleTermType WithFlag(Term::ERuleTermType type, Term::ERuleTermType flag) {
    return static_cast<Term::ERuleTermType>(type | flag);
}

const Term::ERuleTermType kOwnedConstant = WithFlag(Term::kConstantTerm, Term::kOwnedValueFlag);

} // namespace

CExpressionTerm::CExpressionTerm()
    : m_type(static_cast<ERuleTermType>(0)), m_format(kNoFormat), m_slot(0), m_elementSize(0),
      m_elementCount(0), m_content(kNothing) {}

CExpressionTerm::CExpressionTerm(ERuleTermType type, double value) : CExpressionTerm() {
    m_type = type;
    m_format = kScalarFormat;
    HoldInline(BitsOfDouble(value));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, int value) : CExpressionTerm() {
    m_type = WithFlag(type, kIntegerValueFlag);
    m_format = kScalarFormat;
    HoldInline(BitsOfInteger(value));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, const SFVec2f& value) : CExpressionTerm() {
    m_type = WithFlag(type, kOwnedValueFlag);
    m_format = kVector2Format;
    HoldBlock(NewBlock(value), sizeof(SFVec2f));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, const SFVec3f& value) : CExpressionTerm() {
    m_type = WithFlag(type, kOwnedValueFlag);
    m_format = kVector3Format;
    HoldBlock(NewBlock(value), sizeof(SFVec3f));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, const SFVec4f& value) : CExpressionTerm() {
    m_type = WithFlag(type, kOwnedValueFlag);
    m_format = kVector4Format;
    HoldBlock(NewBlock(value), sizeof(SFVec4f));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, const CQuat& value) : CExpressionTerm() {
    m_type = WithFlag(type, kOwnedValueFlag);
    m_format = kQuatFormat;
    HoldBlock(NewQuatBlock(value), sizeof(CQuat));
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, SFMatrix* matrix) : CExpressionTerm() {
    m_type = type;
    m_format = kMatrix4Format;
    HoldPointer(matrix, kCallerPointer);
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, const std::string& name) : CExpressionTerm() {
    m_type = type;
    m_format = kScalarFormat;
    m_name = name;
}

CExpressionTerm::CExpressionTerm(ERuleTermType type, ERuleTermFormat format,
                                 const std::string& name, void* object)
    : CExpressionTerm() {
    m_type = type;
    m_format = format;
    m_name = name;
    HoldPointer(object, kCallerPointer);
}

CExpressionTerm::CExpressionTerm(ERuleTermFormat format, CExpression* expression)
    : CExpressionTerm() {
    SetExpression(format, expression);
}

CExpressionTerm::CExpressionTerm(const CExpressionTerm& other) : CExpressionTerm() {
    CopyFrom(other);
}

CExpressionTerm& CExpressionTerm::operator=(const CExpressionTerm& other) {
    CopyFrom(other);
    return *this;
}

// Blocks are held with shared ownership: the last term that holds one frees it.
CExpressionTerm::~CExpressionTerm() = default;

void CExpressionTerm::CopyFrom(const CExpressionTerm& other) {
    m_type = other.m_type;
    m_format = other.m_format;
    m_slot = other.m_slot;
    m_name = other.m_name;
    m_content = other.m_content;
    m_elementSize = 0;
    m_elementCount = 0;
    if ((other.m_type & kOwnedValueFlag) == 0) {
        m_block = other.m_block;
        return;
    }
    m_elementSize = other.m_elementSize;
    m_elementCount = other.m_elementCount;
    // A flagged term whose slot holds no block of its own (dropped, or re-pointed at a caller's
    // object) has nothing to duplicate: its slot is shared as it is.
    if (other.m_content == kAllocatedBlock) {
        m_block = CopyBlock(other.m_format, other.m_block.get());
        m_slot = reinterpret_cast<std::uintptr_t>(m_block.get());
    } else {
        m_block = other.m_block;
    }
}

void CExpressionTerm::HoldBlock(std::shared_ptr<void> block, std::uint32_t size) {
    m_block = std::move(block);
    m_slot = reinterpret_cast<std::uintptr_t>(m_block.get());
    m_content = kAllocatedBlock;
    m_elementSize = size;
    m_elementCount = 1;
}

void CExpressionTerm::HoldInline(std::uint64_t bits) {
    m_slot = bits;
    m_content = kInlineValue;
}

void CExpressionTerm::HoldPointer(const void* pointer, ESlotContent content) {
    m_slot = reinterpret_cast<std::uintptr_t>(pointer);
    m_content = pointer != nullptr ? content : kNothing;
}

const void* CExpressionTerm::Referent() const {
    if (m_content != kAllocatedBlock && m_content != kCallerPointer) {
        return nullptr;
    }
    return PointerOfBits(m_slot);
}

const void* CExpressionTerm::HeldObject(ERuleTermFormat format) const {
    const void* object = Referent();
    if (m_format != format || object == nullptr) {
        throw 0;
    }
    return object;
}

void* CExpressionTerm::SharedPointer(ERuleTermFormat format) const {
    // An expression reference of this format, or a value, is no object of it.
    if (m_format != format || m_content == kExpressionPointer || m_content == kInlineValue) {
        throw 0;
    }
    return PointerOfBits(m_slot);
}

double CExpressionTerm::ScalarValue() const {
    const bool integer = (m_type & kIntegerValueFlag) != 0;
    if (const void* referent = Referent()) {
        return integer ? *static_cast<const int*>(referent) : *static_cast<const double*>(referent);
    }
    if (m_content == kExpressionPointer) {
        throw 0;
    }
    // Inline, or empty: an unvalued scalar reads as 0.0.
    return integer ? IntegerOfBits(m_slot) : DoubleOfBits(m_slot);
}

double CExpressionTerm::GetScalar() const {
    if (m_format != kScalarFormat) {
        throw 0;
    }
    return ScalarValue();
}

SFVec2f CExpressionTerm::GetVector2() const {
    return *static_cast<const SFVec2f*>(HeldObject(kVector2Format));
}

SFVec3f CExpressionTerm::GetVector3() const {
    return *static_cast<const SFVec3f*>(HeldObject(kVector3Format));
}

SFVec4f CExpressionTerm::GetVector4() const {
    return *static_cast<const SFVec4f*>(HeldObject(kVector4Format));
}

CQuat CExpressionTerm::GetQuat() const {
    return *static_cast<const CQuat*>(HeldObject(kQuatFormat));
}

SFMatrix* CExpressionTerm::GetMatrix4() const {
    return static_cast<SFMatrix*>(SharedPointer(kMatrix4Format));
}

std::string* CExpressionTerm::GetString() const {
    return static_cast<std::string*>(const_cast<void*>(HeldObject(kStringFormat)));
}

void* CExpressionTerm::GetUserObject() const {
    return SharedPointer(kUserObjectFormat);
}

CExpression* CExpressionTerm::GetExpression() const {
    // An inline value or a block of this term is no expression, whatever the type word says.
    if (m_type != kExpressionTerm || m_content == kInlineValue || m_content == kAllocatedBlock) {
        throw 0;
    }
    return static_cast<CExpression*>(PointerOfBits(m_slot));
}

CExpressionTerm::ERuleTermType CExpressionTerm::GetType() const {
    return m_type;
}

CExpressionTerm::ERuleTermType CExpressionTerm::GetPlainType() const {
    return static_cast<ERuleTermType>(m_type & 63);
}

CExpressionTerm::ERuleTermFormat CExpressionTerm::GetFormat() const {
    return m_format;
}

int CExpressionTerm::GetIntegerValue() const {
    return IntegerOfBits(m_slot);
}

void CExpressionTerm::SetScalar(double value) {
    ReleaseValue();
    MakeScalarConstant(value);
    m_name.clear();
}

void CExpressionTerm::MakeScalarConstant(double value) {
    m_type = kConstantTerm;
    m_format = kScalarFormat;
    HoldInline(BitsOfDouble(value));
    m_elementSize = 0;
    m_elementCount = 0;
}

void CExpressionTerm::SetVector3(const SFVec3f& value) {
    ReleaseValue();
    m_type = kOwnedConstant;
    m_format = kVector3Format;
    HoldBlock(NewBlock(value), sizeof(SFVec3f));
}

void CExpressionTerm::SetQuat(const CQuat& value) {
    m_type = kOwnedConstant;
    m_format = kQuatFormat;
    HoldBlock(NewQuatBlock(value), sizeof(CQuat));
}

void CExpressionTerm::SetString(const std::string& value) {
    ReleaseValue();
    m_type = kOwnedConstant;
    m_format = kStringFormat;
    HoldBlock(NewBlock(value), sizeof(std::string));
}

void CExpressionTerm::SetMatrix4(SFMatrix* matrix) {
    m_format = kMatrix4Format;
    HoldPointer(matrix, kCallerPointer);
}

void CExpressionTerm::SetExpression(ERuleTermFormat format, CExpression* expression) {
    m_type = kExpressionTerm;
    m_format = format;
    HoldPointer(expression, kExpressionPointer);
}

void CExpressionTerm::BindFormalParameter(double value) {
    if (m_type != kFormalTerm) {
        throw 0;
    }
    m_format = kScalarFormat;
    // Deliberately without kOwnedValueFlag: copies of the formal share the bound double.
    HoldBlock(NewBlock(value), sizeof(double));
}

void CExpressionTerm::SetName(const std::string& name) {
    m_name = name;
}

std::string CExpressionTerm::GetName() const {
    return m_name;
}

// The slot refers to a block only through m_block, so the flag-blind release and the flagged
// one coincide: both let go of what the term allocated and never free an inline value or a
// caller's pointer.
void CExpressionTerm::ReleaseValue() {
    m_block.reset();
    m_slot = 0;
    m_content = kNothing;
}

void CExpressionTerm::DropValue() {
    ReleaseValue();
}

bool CExpressionTerm::IsOperator() const {
    return m_type == kOperatorTerm;
}

bool CExpressionTerm::IsConstant() const {
    return m_type == kConstantTerm;
}

bool CExpressionTerm::IsVariable() const {
    return m_type == kVariableTerm;
}

bool CExpressionTerm::IsFormal() const {
    return m_type == kFormalTerm;
}

bool CExpressionTerm::IsExpression() const {
    return m_type == kExpressionTerm;
}

bool CExpressionTerm::IsScalar() const {
    return m_format == kScalarFormat;
}

bool CExpressionTerm::IsIntegerConstant() const {
    return (m_type & kIntegerValueFlag) != 0 && m_format == kScalarFormat;
}

bool CExpressionTerm::IsTrue() const {
    if (m_content == kNothing) {
        return false;
    }
    switch (m_format) {
    case kMarkerFormat:
        return true;
    case kScalarFormat: {
        if (m_type != kConstantTerm && m_type != kVariableTerm) {
            return false; // integer terms and formals included, as rule authors know it
        }
        const double value = ScalarValue();
        return value < 0.0 || value > 0.0; // NaN is false
    }
    case kStringFormat: {
        const void* string = Referent();
        return string != nullptr && !static_cast<const std::string*>(string)->empty();
    }
    default:
        return false;
    }
}

bool CExpressionTerm::IsFalse() const {
    return !IsTrue();
}
