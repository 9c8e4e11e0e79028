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

include(ZaltLtsImportedLibrary)
zalt_lts_imported_library(Nettle Nettle::Nettle)
