# `cmake --install` puts the static library, the public headers (include/tessara; everything under
# src/ stays private) and a CMake package, so a host writes find_package(Tessara) and links
# Tessara::tessara. The bundled resources are compiled into the archive itself.
include(CMakePackageConfigHelpers)

set(TESSARA_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Tessara)

install(TARGETS tessara EXPORT TessaraTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/tessara
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h")
install(EXPORT TessaraTargets
    NAMESPACE Tessara::
    DESTINATION ${TESSARA_PACKAGE_DIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TessaraConfig.cmake.in
    ${PROJECT_BINARY_DIR}/TessaraConfig.cmake
    INSTALL_DESTINATION ${TESSARA_PACKAGE_DIR})
# Before 1.0 a minor release may change the API.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TessaraConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/TessaraConfig.cmake
    ${PROJECT_BINARY_DIR}/TessaraConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/TessaraDependencies.cmake
    DESTINATION ${TESSARA_PACKAGE_DIR})
