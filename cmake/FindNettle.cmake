# FindNettle: nettle installs a pkg-config file but no CMake package, so this
# module defines Nettle::Nettle and Nettle_VERSION from its header and library.
# Only libnettle (hashes and ciphers) is looked for, not libhogweed (public-key
# algorithms, which needs GMP). It searches the usual places, so a cross build
# finds the copy in its CMAKE_FIND_ROOT_PATH.
find_path(Nettle_INCLUDE_DIR nettle/sha2.h)
find_library(Nettle_LIBRARY NAMES nettle libnettle)

if(Nettle_INCLUDE_DIR AND EXISTS ${Nettle_INCLUDE_DIR}/nettle/version.h)
  file(STRINGS ${Nettle_INCLUDE_DIR}/nettle/version.h version_lines
    REGEX "^#define NETTLE_VERSION_(MAJOR|MINOR) ")
  set(parts)
  foreach(line IN LISTS version_lines)
    string(REGEX REPLACE "^#define NETTLE_VERSION_[A-Z]+ +([0-9]+).*" "\\1" part "${line}")
    list(APPEND parts ${part})
  endforeach()
  list(JOIN parts . Nettle_VERSION)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Nettle
  REQUIRED_VARS Nettle_LIBRARY Nettle_INCLUDE_DIR VERSION_VAR Nettle_VERSION)
mark_as_advanced(Nettle_INCLUDE_DIR Nettle_LIBRARY)

if(Nettle_FOUND AND NOT TARGET Nettle::Nettle)
  add_library(Nettle::Nettle UNKNOWN IMPORTED)
  set_target_properties(Nettle::Nettle PROPERTIES
    IMPORTED_LOCATION ${Nettle_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Nettle_INCLUDE_DIR})
endif()
