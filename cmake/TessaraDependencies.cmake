# The libraries the static `tessara` links privately. A static archive carries none of them, so
# whoever links it needs them too: this file finds them for the SDK's own build and, installed
# next to TessaraConfig.cmake, again for a host. Safe to include more than once.

find_package(ZLIB REQUIRED)
find_package(PkgConfig REQUIRED)
if(NOT TARGET PkgConfig::BROTLI)
    pkg_check_modules(BROTLI REQUIRED IMPORTED_TARGET libbrotlidec)
endif()
if(NOT TARGET PkgConfig::OPENH264)
    pkg_check_modules(OPENH264 REQUIRED IMPORTED_TARGET openh264)
endif()

# Debian ships libyuv without a pkg-config file, so it is found as a plain library; a target
# rather than a path keeps the installed package free of this machine's library paths.
if(NOT TARGET Tessara::yuv)
    find_library(TESSARA_LIBYUV_LIBRARY NAMES yuv REQUIRED)
    find_path(TESSARA_LIBYUV_INCLUDE_DIR NAMES libyuv.h REQUIRED)
    add_library(Tessara::yuv UNKNOWN IMPORTED)
    set_target_properties(Tessara::yuv PROPERTIES
        IMPORTED_LOCATION "${TESSARA_LIBYUV_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${TESSARA_LIBYUV_INCLUDE_DIR}")
endif()
