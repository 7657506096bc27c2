// zqexport.h: the one export macro of the library.
#ifndef ZQMATH_ZQEXPORT_H
#define ZQMATH_ZQEXPORT_H

#if defined(ZQMATH_STATIC)
#define ZQMATH_API
#elif defined(_WIN32)
#if defined(ZQMATH_EXPORTS)
#define ZQMATH_API __declspec(dllexport)
#else
#define ZQMATH_API __declspec(dllimport)
#endif
#else
#define ZQMATH_API __attribute__((visibility("default")))
#endif

// A member defined inline in an ELF shared library's header that the library exports as well,
// for modules built when it was not inline. A Windows DLL keeps such a member out of line: it
// exports no inline member.
#if !defined(ZQMATH_STATIC) && defined(_WIN32)
#define ZQMATH_INLINE_EXPORTED 0
#define ZQMATH_INLINE_EXPORT
#else
#define ZQMATH_INLINE_EXPORTED 1
#define ZQMATH_INLINE_EXPORT __attribute__((visibility("default")))
#endif

#endif
