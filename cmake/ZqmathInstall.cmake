# Install rules: headers in include/zqmath, the library, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS zqmath
    EXPORT zqmathTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zqmath)

set(ZQMATH_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zqmath)
install(EXPORT zqmathTargets NAMESPACE zqmath:: DESTINATION ${ZQMATH_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zqmathConfig.cmake.in
    ${PROJECT_BINARY_DIR}/zqmathConfig.cmake
    INSTALL_DESTINATION ${ZQMATH_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zqmathConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zqmathConfig.cmake ${PROJECT_BINARY_DIR}/zqmathConfigVersion.cmake
    DESTINATION ${ZQMATH_CMAKE_DIR})

if(ZQMATH_SHARED)
    set(ZQMATH_PC_CFLAGS "")
else()
    set(ZQMATH_PC_CFLAGS "-DZQMATH_STATIC")
endif()
# The .pc file finds the prefix from its own location, so the install can be moved.
file(RELATIVE_PATH ZQMATH_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" ZQMATH_PC_TO_PREFIX "${ZQMATH_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/zqmath.pc.in ${PROJECT_BINARY_DIR}/zqmath.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zqmath.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
