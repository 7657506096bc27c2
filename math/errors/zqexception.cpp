// CZqException: an error record's content carried to the caller.
#include "zqexception.h"

namespace {

const char* ModuleText(int module) {
    switch (module) {
    case CZqException::kMathModule:
        return "math";
    case CZqException::kPstoreModule:
        return "pstore";
    case CZqException::kLayerModule:
        return "layer";
    case CZqException::kNodeModule:
        return "node";
    case CZqException::kRuncoreModule:
        return "runcore";
    case CZqException::kAiModule:
        return "ai";
    case CZqException::kSystemModule:
        return "system";
    default:
        return "unknown module";
    }
}

const char* ErrClassText(int errClass) {
    switch (errClass) {
    case CZqException::kInternalError:
        return "internal";
    case CZqException::kParameterError:
        return "parameter";
    case CZqException::kMathError:
        return "math";
    case CZqException::kDataError:
        return "data";
    case CZqException::kHardwareError:
        return "hardware";
    default:
        return "unknown error class";
    }
}

const char* SeverityText(int severity) {
    switch (severity) {
    case CZqException::kUnknownSeverity:
        return "unknown";
    case CZqException::kWarning:
        return "warning";
    case CZqException::kSevere:
        return "severe";
    case CZqException::kDamaging:
        return "damaging";
    case CZqException::kFatal:
        return "fatal";
    // The error-class fallback, not "unknown": readers of old logs match on it.
    default:
        return "unknown error class";
    }
}

} // namespace

CZqException::CZqException()
    : m_errNum(0), m_message("generic"), m_module(kSystemModule), m_code(kInternalError),
      m_severity(kUnknownSeverity) {}

CZqException::CZqException(const CZqErrRec& record)
    : m_errNum(record.m_number), m_message(record.m_message), m_module(record.m_module),
      m_code(record.m_errClass), m_severity(record.m_severity) {}

CZqException::CZqException(int number, const char* text) : CZqException(CZqErrRec::Record(number)) {
    if (text != nullptr) {
        m_message += text;
    }
}

CZqException::CZqException(const std::string& text, short code, CZqException::ESeverity severity)
    : m_errNum(0), m_message(text), m_module(kSystemModule), m_code(static_cast<EErrClass>(code)),
      m_severity(severity) {}

CZqException::CZqException(const CZqException& other) = default;

CZqException& CZqException::operator=(const CZqException& other) = default;

CZqException::~CZqException() = default;

short CZqException::ErrNum() const {
    return static_cast<short>(m_errNum);
}

short CZqException::Code() const {
    return static_cast<short>(m_code);
}

short CZqException::Severity() const {
    return static_cast<short>(m_severity);
}

const std::string& CZqException::Text() const {
    return m_message;
}

const std::string& CZqException::DecodeEModule() const {
    static std::string text;
    text = ModuleText(m_module);
    return text;
}

const std::string& CZqException::DecodeEErrClass() const {
    static std::string text;
    text = ErrClassText(m_code);
    return text;
}

const std::string& CZqException::DecodeESeverity() const {
    static std::string text;
    text = SeverityText(m_severity);
    return text;
}

std::string CZqException::Class() const {
    return "ZqGeneric";
}
