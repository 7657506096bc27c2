// zqplatform.h: the host platform's types and calls that the library uses, in one place.
// On Windows these are the real ones; elsewhere they are small substitutes with the same
// names and layouts. No other file of the library includes a system platform header.
#ifndef ZQMATH_ZQPLATFORM_H
#define ZQMATH_ZQPLATFORM_H

#include "zqexport.h"

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// mmsystem.h needs the types of windows.h.
#include <mmsystem.h>

#if defined(_AFXDLL)
#include <afxwin.h>
// The extension-module declarations need the framework above.
#include <afxdllx.h>
#define ZQMATH_HAVE_MFC 1
#endif

#else // not Windows

#include <cstdint>

typedef std::uint32_t DWORD; // 32 bits, as on Windows
typedef int BOOL;
typedef unsigned int UINT;
typedef unsigned char BYTE;
typedef void* HINSTANCE;
typedef HINSTANCE HMODULE;
typedef UINT MMRESULT;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#define TIME_MS 0x0001
#define TIMERR_NOERROR 0

/// The multimedia timer's time record (12 bytes, as on Windows).
struct MMTIME {
    UINT wType;
    union {
        DWORD ms;
        DWORD sample;
        DWORD cb;
        DWORD ticks;
        struct {
            BYTE hour, min, sec, frame, fps, dummy, pad[2];
        } smpte;
        struct {
            DWORD songptrpos;
        } midi;
    } u;
};

#endif // not Windows

#if !defined(ZQMATH_HAVE_MFC)

/// The framework's integer point.
class CPoint {
public:
    CPoint() : x(0), y(0) {}
    CPoint(int initX, int initY) : x(initX), y(initY) {}
    int x;
    int y;
};

/// The framework's integer rectangle.
class CRect {
public:
    CRect() : left(0), top(0), right(0), bottom(0) {}
    CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    int left;
    int top;
    int right;
    int bottom;
};

#endif // !ZQMATH_HAVE_MFC

#if defined(ZQMATH_BUILD)

#if !defined(ZQMATH_HAVE_MFC)
/// The framework's extension-module record; the substitutes only mark it initialised.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
};
/// Registers the library as an extension module of the host framework; nonzero on success.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
/// Ends the registration made by AfxInitExtensionModule.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);
#endif

#if !defined(_WIN32)
/// Milliseconds since the system started, in a TIME_MS record; 0 on success.
MMRESULT timeGetSystemTime(MMTIME* time, UINT size);
#endif

#endif // ZQMATH_BUILD

#endif
