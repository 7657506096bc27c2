// mathdll.h: the library frame: the library object, its release signature and the small
// exported helpers (power of two, marked clock time).
#ifndef ZQMATH_MATHDLL_H
#define ZQMATH_MATHDLL_H

#include "zqexport.h"
#include "zqplatform.h"

/// Base of the product's library objects: it remembers the module handle it was made with.
class ZQMATH_API CBaseDLL {
public:
    /// Stores the handle and notes that a library object has been constructed.
    explicit CBaseDLL(HINSTANCE instance);
    /// Copies the handle only.
    CBaseDLL(const CBaseDLL& other);
    CBaseDLL& operator=(const CBaseDLL& other);
    virtual ~CBaseDLL();

private:
    HINSTANCE m_hInstance;
};

/// The one library object, made by BindMathServices and destroyed by UnbindMathServices.
class ZQMATH_API CMathDLL : public CBaseDLL {
public:
    /// Sets the tolerance to 1e-5, seeds rand() from the clock and registers itself in
    /// sfMathDLL (an earlier object is replaced, not destroyed).
    explicit CMathDLL(HINSTANCE instance);
    /// Copies handle and tolerance; neither seeds nor registers.
    CMathDLL(const CMathDLL& other);
    CMathDLL& operator=(const CMathDLL& other);
    /// Clears sfMathDLL whatever it points at, even when this object is an unregistered copy:
    /// callers have always seen that behaviour.
    ~CMathDLL() override;

    /// The registered library object, or null.
    static CMathDLL* OnlyInstance();
    /// The release stamp, formatted into one static buffer that every call returns.
    char* Signature() const;

    /// The live library object, or null.
    static CMathDLL* sfMathDLL;

private:
    double m_tolerance;
};

/// Creates the library object for the host module (allocation failure is swallowed).
ZQMATH_API void BindMathServices(HINSTANCE instance);
/// Destroys the library object if there is one; the argument is ignored.
ZQMATH_API void UnbindMathServices(long unused);
// These three are exported under their plain, unmangled names: hosts look them up by name.
extern "C" {
/// The greatest power of two not above n, with n minus it in *remainder and its exponent in
/// *exponent; n <= 0 gives 0, remainder n, exponent -1.
ZQMATH_API int BinaryPower(int n, int* remainder, int* exponent);
/// Stores and returns the system time in milliseconds since the system started.
ZQMATH_API DWORD MarkClockTime();
/// The value last stored by MarkClockTime (0 before the first call).
ZQMATH_API DWORD GetMarkedTime();
}

#endif
