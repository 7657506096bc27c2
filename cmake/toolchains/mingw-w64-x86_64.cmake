# 64-bit Windows (LLP64) with MinGW-w64; programs run under Wine.
set(ZQMATH_MINGW_TRIPLE x86_64-w64-mingw32)
set(ZQMATH_WINE /usr/lib/wine/wine64 CACHE FILEPATH "Wine loader that runs the tests")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR ${ZQMATH_WINE})
