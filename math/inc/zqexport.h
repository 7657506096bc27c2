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

#endif
