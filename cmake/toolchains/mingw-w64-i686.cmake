# 32-bit Windows with MinGW-w64, the original's own platform. SSE2 arithmetic, so that no x87
# extended precision changes a result. Programs run under a 32-bit Wine where one is installed.
set(ZQMATH_MINGW_TRIPLE i686-w64-mingw32)
set(ZQMATH_WINE /usr/lib/wine/wine CACHE FILEPATH "Wine loader that runs the tests")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR ${ZQMATH_WINE})
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
