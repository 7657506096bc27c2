// CZqErrRec: one row of the product's error table.
#include "zqexception.h"

#include <new>

CZqErrRec::CZqErrRec(int number, CZqException::EModule module, const std::string& message,
                     CZqException::EErrClass errClass, CZqException::ESeverity severity)
    : m_number(static_cast<short>(number)), m_module(module), m_message(message),
      m_errClass(errClass), m_severity(severity) {}

CZqErrRec::CZqErrRec(const CZqErrRec& other) = default;

CZqErrRec& CZqErrRec::operator=(const CZqErrRec& other) = default;

CZqErrRec::~CZqErrRec() = default;

const CZqErrRec& CZqErrRec::Record(int number) {
    return sm_exceptionTable[number - 1];
}

CZqException* CZqErrRec::Exception(int number) {
    return new (std::nothrow) CZqException(Record(number));
}
