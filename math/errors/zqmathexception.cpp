// CZqMathException: the exception that the math library throws.
#include "zqexception.h"

CZqMathException::CZqMathException(int number, char* text) : CZqException(number, text) {}

CZqMathException::CZqMathException(const std::string& text, short code,
                                   CZqException::ESeverity severity)
    : CZqException(text, code, severity) {}

CZqMathException::CZqMathException(const CZqMathException& other) = default;

CZqMathException& CZqMathException::operator=(const CZqMathException& other) = default;

std::string CZqMathException::Class() const {
    return "ZqMath";
}
