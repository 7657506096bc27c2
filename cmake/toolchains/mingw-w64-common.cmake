# Shared part of the MinGW-w64 toolchains; ZQMATH_MINGW_TRIPLE names the target.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${ZQMATH_MINGW_TRIPLE}-gcc-win32)
set(CMAKE_CXX_COMPILER ${ZQMATH_MINGW_TRIPLE}-g++-win32)
set(CMAKE_RC_COMPILER ${ZQMATH_MINGW_TRIPLE}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${ZQMATH_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The compiler's runtime is linked in, so the DLL and the programs need no MinGW DLLs beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++")
