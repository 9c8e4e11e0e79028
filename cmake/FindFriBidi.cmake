# FindFriBidi: defines FriBidi::FriBidi and FriBidi_VERSION from FriBidi's
# header and library, without pkg-config, so that a cross build finds the copy
# in its CMAKE_FIND_ROOT_PATH as a native build finds Debian's
# libfribidi-dev. The headers are included as <fribidi.h>, from their own
# folder. A static libfribidi.a needs no definition in its users: its header
# declares the functions dllimport only for MSVC.
find_path(FriBidi_INCLUDE_DIR fribidi.h PATH_SUFFIXES fribidi)
find_library(FriBidi_LIBRARY NAMES fribidi)

if(FriBidi_INCLUDE_DIR AND EXISTS ${FriBidi_INCLUDE_DIR}/fribidi-config.h)
  file(STRINGS ${FriBidi_INCLUDE_DIR}/fribidi-config.h version_line REGEX "^#define FRIBIDI_VERSION ")
  string(REGEX REPLACE "^#define FRIBIDI_VERSION \"([0-9.]+)\".*" "\\1" FriBidi_VERSION "${version_line}")
endif()

include(ZaltLtsImportedLibrary)
zalt_lts_imported_library(FriBidi FriBidi::FriBidi)
