// CExpression: a postfix stack of terms with formal parameters bound from text.
#include "expression.h"

#include "expression/evaluator.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

using Term = CExpressionTerm;
using TermList = std::vector<CExpressionTerm>;

/// The longest number BindFormalParameters reads; a longer one fails the binding.
const std::size_t kMaxNumberLength = 63;

/// Characters that may make up a number in an argument list.
bool IsNumberCharacter(char c) {
    return c != '\0' && std::strchr("0123456789.+-eE", c) != nullptr;
}

/// A position as a string index; a negative one becomes npos, which every access refuses.
std::size_t IndexOf(int pos) {
    return pos < 0 ? std::string::npos : static_cast<std::size_t>(pos);
}

} // namespace

CExpression::CExpression() = default;

CExpression::CExpression(const CExpression& other) = default;

CExpression& CExpression::operator=(const CExpression& other) = default;

// A list made by ParseFormals is freed by its last user; a caller's list is never freed here.
CExpression::~CExpression() = default;

void CExpression::PushTerm(const CExpressionTerm& term) {
    // Doubling from one element, whatever the standard library's own growth rule.
    if (m_stack.size() == m_stack.capacity()) {
        m_stack.reserve(m_stack.size() + std::max<std::size_t>(m_stack.size(), 1));
    }
    m_stack.push_back(term);
}

CExpressionTerm CExpression::PopTerm() {
    if (m_stack.empty()) {
        throw 0;
    }
    const CExpressionTerm top = m_stack.back();
    m_stack.pop_back();
    return top;
}

void CExpression::SetName(const std::string& name) {
    m_name = name;
}

std::string CExpression::GetName() const {
    return m_name;
}

void CExpression::SetFormals(std::vector<CExpressionTerm>* formals) {
    if (formals == nullptr) {
        m_formals.reset();
        return;
    }
    m_formals = std::shared_ptr<TermList>(formals, [](TermList*) {});
}

std::vector<CExpressionTerm>* CExpression::GetFormals() const {
    return m_formals.get();
}

bool CExpression::IsParametric() const {
    return m_formals != nullptr;
}

void CExpression::ParseFormals(const std::string& text) {
    const std::size_t open = text.find('(');
    if (open == std::string::npos) {
        m_formals.reset();
        return;
    }
    m_formals = std::make_shared<TermList>();
    m_name = text.substr(0, open);
    // The text's last character is taken to be the ")" without looking at it.
    std::string parameters = text.substr(open + 1);
    if (!parameters.empty()) {
        parameters.pop_back();
    }
    std::size_t start = 0;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i] == ',') {
            // The length is the comma's index, not its distance from start: a middle formal's
            // name runs on past its comma. Rule texts have always been read this way.
            m_formals->push_back(Term(Term::kFormalTerm, parameters.substr(start, i)));
            start = i + 1;
        }
    }
    if (start < parameters.size()) {
        m_formals->push_back(Term(Term::kFormalTerm, parameters.substr(start)));
    }
}

int CExpression::BindFormalParameters(std::string text, int& pos, int& bound) {
    if (text.at(IndexOf(pos)) != '(') {
        return 0;
    }
    if (m_formals == nullptr) {
        throw 0;
    }
    TermList& formals = *m_formals;
    const int count = static_cast<int>(formals.size());
    std::size_t read = IndexOf(pos) + 1;
    int done = 0;
    char ended = '\0';
    while (done < count && ended != ')') {
        char number[kMaxNumberLength + 1];
        std::size_t length = 0;
        bool tooLong = false;
        for (;;) {
            const char c = text.at(read++); // the character that ends the number is consumed
            if (!IsNumberCharacter(c)) {
                ended = c;
                break;
            }
            tooLong = tooLong || length == kMaxNumberLength;
            if (!tooLong) {
                number[length++] = c;
            }
        }
        if (tooLong) {
            break;
        }
        number[length] = '\0';
        formals[static_cast<std::size_t>(done)].BindFormalParameter(std::strtod(number, nullptr));
        ++done;
    }
    if (done != count) {
        for (Term& formal : formals) {
            formal.DropValue();
        }
        bound = 0;
        return 0;
    }
    pos = static_cast<int>(read);
    bound = count;
    return count;
}

void CExpression::ClearAllFormalBindings() {
    if (m_formals == nullptr) {
        return;
    }
    for (Term& formal : *m_formals) {
        formal.DropValue();
    }
}

CExpressionTerm::ERuleTermFormat CExpression::GetExpressionResultFormat() const {
    return m_stack.empty() ? Term::kNoFormat : m_stack.back().GetFormat();
}

int CExpression::Matches(const CExpressionTerm& subject, int pos) {
    const std::string text = *subject.GetString();
    const zq::detail::EvaluationMatrices slots = zq::detail::LibraryMatrices();
    const std::string pattern = *Evaluate(slots.first, slots.second).GetString();
    const long long length = static_cast<long long>(pattern.size());
    // A position outside the subject matches nothing rather than failing in substr.
    if (pos < 0 || static_cast<std::size_t>(pos) > text.size()) {
        return 0;
    }
    if (pos + length - 1 > static_cast<long long>(text.size()) ||
        text.compare(static_cast<std::size_t>(pos), pattern.size(), pattern) != 0) {
        return 0;
    }
    if (m_formals == nullptr) {
        return static_cast<int>(length);
    }
    const int count = static_cast<int>(m_formals->size());
    int next = pos + static_cast<int>(length);
    int bound = -1; // left so when no "(" follows the pattern: no match
    BindFormalParameters(text, next, bound);
    m_formals.reset(); // lets go of the list, bound or not
    return bound == count ? next - pos : 0;
}

CExpressionTerm CExpression::Evaluate(SFMatrix* first, SFMatrix* second) const {
    if (m_stack.empty()) {
        return CExpressionTerm(CExpressionTerm::kConstantTerm, 0);
    }
    zq::detail::LibraryMatrices() = zq::detail::EvaluationMatrices{first, second};
    int index = static_cast<int>(m_stack.size()) - 1;
    return Evaluate(index);
}

CExpressionTerm CExpression::Evaluate(int& index) const {
    return zq::detail::EvaluateEndingAt(m_stack, m_formals.get(), index);
}
