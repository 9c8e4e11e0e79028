# FindHarfBuzz: defines HarfBuzz::HarfBuzz and HarfBuzz_VERSION from HarfBuzz's
# header and library, without pkg-config, so that a cross build finds the copy
# in its CMAKE_FIND_ROOT_PATH as a native build finds Debian's
# libharfbuzz-dev. The headers are included as <hb.h>, from their own folder.
find_path(HarfBuzz_INCLUDE_DIR hb.h PATH_SUFFIXES harfbuzz)
find_library(HarfBuzz_LIBRARY NAMES harfbuzz)

if(HarfBuzz_INCLUDE_DIR AND EXISTS ${HarfBuzz_INCLUDE_DIR}/hb-version.h)
  file(STRINGS ${HarfBuzz_INCLUDE_DIR}/hb-version.h version_line REGEX "^#define HB_VERSION_STRING ")
  string(REGEX REPLACE "^#define HB_VERSION_STRING \"([0-9.]+)\".*" "\\1" HarfBuzz_VERSION "${version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(HarfBuzz
  REQUIRED_VARS HarfBuzz_LIBRARY HarfBuzz_INCLUDE_DIR VERSION_VAR HarfBuzz_VERSION)
mark_as_advanced(HarfBuzz_INCLUDE_DIR HarfBuzz_LIBRARY)

if(HarfBuzz_FOUND AND NOT TARGET HarfBuzz::HarfBuzz)
  add_library(HarfBuzz::HarfBuzz UNKNOWN IMPORTED)
  set_target_properties(HarfBuzz::HarfBuzz PROPERTIES
    IMPORTED_LOCATION ${HarfBuzz_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${HarfBuzz_INCLUDE_DIR})
endif()
