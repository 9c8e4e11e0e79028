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

include(ZaltLtsImportedLibrary)
zalt_lts_imported_library(HarfBuzz HarfBuzz::HarfBuzz)
