# FindFriBidi: defines FriBidi::FriBidi and FriBidi_VERSION from FriBidi's
# header and library, without pkg-config, so that a cross build finds the copy
# in its CMAKE_FIND_ROOT_PATH as a native build finds Debian's
# libfribidi-dev. The headers are included as <fribidi.h>, from their own
# folder. On Windows a static libfribidi.a needs FRIBIDI_LIB_STATIC in its
# users: its header declares the functions dllimport otherwise.
find_path(FriBidi_INCLUDE_DIR fribidi.h PATH_SUFFIXES fribidi)
find_library(FriBidi_LIBRARY NAMES fribidi)

if(FriBidi_INCLUDE_DIR AND EXISTS ${FriBidi_INCLUDE_DIR}/fribidi-config.h)
  file(STRINGS ${FriBidi_INCLUDE_DIR}/fribidi-config.h version_line REGEX "^#define FRIBIDI_VERSION ")
  string(REGEX REPLACE "^#define FRIBIDI_VERSION \"([0-9.]+)\".*" "\\1" FriBidi_VERSION "${version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FriBidi
  REQUIRED_VARS FriBidi_LIBRARY FriBidi_INCLUDE_DIR VERSION_VAR FriBidi_VERSION)
mark_as_advanced(FriBidi_INCLUDE_DIR FriBidi_LIBRARY)

if(FriBidi_FOUND AND NOT TARGET FriBidi::FriBidi)
  add_library(FriBidi::FriBidi UNKNOWN IMPORTED)
  set_target_properties(FriBidi::FriBidi PROPERTIES
    IMPORTED_LOCATION ${FriBidi_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${FriBidi_INCLUDE_DIR})
  if(WIN32 AND FriBidi_LIBRARY MATCHES "\\.a$")
    set_target_properties(FriBidi::FriBidi PROPERTIES INTERFACE_COMPILE_DEFINITIONS FRIBIDI_LIB_STATIC)
  endif()
endif()
