// zqexception.h: the product-wide numbered error records and the exceptions that carry them.
#ifndef ZQMATH_ZQEXCEPTION_H
#define ZQMATH_ZQEXCEPTION_H

#include "zqexport.h"

#include <cstdint>
#include <string>

class CZqErrRec;

/// An error of the product: number, message, module, error class and severity.
/// Thrown by value; the destructor is deliberately not virtual (the class has one virtual
/// member, Class()).
class ZQMATH_API CZqException {
public:
    /// The module of the product that raises an error.
    enum EModule : int {
        kMathModule = 1,
        kPstoreModule = 2,
        kLayerModule = 3,
        kNodeModule = 4,
        kRuncoreModule = 5,
        kAiModule = 6,
        kSystemModule = 7
    };
    /// The kind of an error.
    enum EErrClass : int {
        kInternalError = 1,
        kParameterError = 2,
        kMathError = 3,
        kDataError = 4,
        kHardwareError = 5
    };
    /// How bad an error is.
    enum ESeverity : int {
        kUnknownSeverity = 0,
        kWarning = 1,
        kSevere = 2,
        kDamaging = 3,
        kFatal = 4
    };

    /// Number 0, message "generic", module system, class internal, severity unknown.
    CZqException();
    /// Copies the record's number, message, module, class and severity.
    explicit CZqException(const CZqErrRec& record);
    /// The record of that number (no range check), its message followed by text if any.
    CZqException(int number, const char* text);
    /// A free-text error; its number is 0 and its module "system".
    CZqException(const std::string& text, short code, CZqException::ESeverity severity);
    CZqException(const CZqException& other);
    CZqException& operator=(const CZqException& other);
    ~CZqException();

    short ErrNum() const;
    /// The error class, as 16 bits.
    short Code() const;
    /// The severity, as 16 bits.
    short Severity() const;
    const std::string& Text() const;
    /// The module's text. Each decoder returns one static string that its next call rewrites.
    const std::string& DecodeEModule() const;
    const std::string& DecodeEErrClass() const;
    /// Falls back to "unknown error class", the error-class text, as it always has.
    const std::string& DecodeESeverity() const;
    /// "ZqGeneric".
    virtual std::string Class() const;

private:
    std::int32_t m_errNum;
    std::string m_message;
    EModule m_module;
    EErrClass m_code;
    ESeverity m_severity;
};

/// An error raised by the math library; the same content, Class() "ZqMath".
class ZQMATH_API CZqMathException : public CZqException {
public:
    /// As CZqException(number, text).
    CZqMathException(int number, char* text);
    CZqMathException(const std::string& text, short code, CZqException::ESeverity severity);
    CZqMathException(const CZqMathException& other);
    CZqMathException& operator=(const CZqMathException& other);
    /// "ZqMath".
    std::string Class() const override;
};

/// One row of the error table: number, module, message, error class and severity.
class ZQMATH_API CZqErrRec {
public:
    /// Stores all five; the number is truncated to 16 bits.
    CZqErrRec(int number, CZqException::EModule module, const std::string& message,
              CZqException::EErrClass errClass, CZqException::ESeverity severity);
    CZqErrRec(const CZqErrRec& other);
    CZqErrRec& operator=(const CZqErrRec& other);
    ~CZqErrRec();

    /// The record of that number (1 to 126); no range check.
    static const CZqErrRec& Record(int number);
    /// A new heap exception filled from the record of that number; the caller deletes it.
    static CZqException* Exception(int number);

private:
    friend class CZqException;

    short m_number;
    CZqException::EModule m_module;
    std::string m_message;
    CZqException::EErrClass m_errClass;
    CZqException::ESeverity m_severity;

    static CZqErrRec sm_exceptionTable[126];
};

#endif
