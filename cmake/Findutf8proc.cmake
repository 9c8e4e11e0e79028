# Findutf8proc: utf8proc installs no CMake package of its own (neither Debian's
# libutf8proc-dev nor a build from its sources), so this module defines
# utf8proc::utf8proc and utf8proc_VERSION from its header and library. It
# searches the usual places, so a cross build finds the copy in its
# CMAKE_FIND_ROOT_PATH. On Windows a static libutf8proc.a needs
# UTF8PROC_STATIC in its users: its header declares the functions dllimport
# otherwise.
find_path(utf8proc_INCLUDE_DIR utf8proc.h)
find_library(utf8proc_LIBRARY NAMES utf8proc)

if(utf8proc_INCLUDE_DIR AND EXISTS ${utf8proc_INCLUDE_DIR}/utf8proc.h)
  file(STRINGS ${utf8proc_INCLUDE_DIR}/utf8proc.h version_lines
    REGEX "^#define UTF8PROC_VERSION_(MAJOR|MINOR|PATCH) ")
  set(parts)
  foreach(line IN LISTS version_lines)
    string(REGEX REPLACE "^#define UTF8PROC_VERSION_[A-Z]+ +([0-9]+).*" "\\1" part "${line}")
    list(APPEND parts ${part})
  endforeach()
  list(JOIN parts . utf8proc_VERSION)
endif()

include(ZaltLtsImportedLibrary)
zalt_lts_imported_library(utf8proc utf8proc::utf8proc)
if(TARGET utf8proc::utf8proc AND WIN32 AND utf8proc_LIBRARY MATCHES "\\.a$")
  set_target_properties(utf8proc::utf8proc PROPERTIES INTERFACE_COMPILE_DEFINITIONS UTF8PROC_STATIC)
endif()
