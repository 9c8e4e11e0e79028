# FindLibXml2: CMake's own module, plus the one thing it leaves out for a
# static libxml2 on Windows. There libxml2's headers declare every function
# dllimport unless LIBXML_STATIC is defined, and the module defines nothing
# itself: it copies pkg-config's flags only when pkg-config describes the very
# copy it found, which in a cross build it does not (it describes the host's).
# Without the definition a user compiles calls through __imp_ pointers that
# the static library does not have, and fails to link.
#
# The static libxml2.a that scripts/windows-deps.sh builds needs no other
# library: its thread support uses winpthreads, which MinGW-w64's compiler
# links by default. An import library (libxml2.dll.a) belongs to a DLL and
# gets nothing.
include(${CMAKE_ROOT}/Modules/FindLibXml2.cmake)

if(LibXml2_FOUND AND WIN32 AND LIBXML2_LIBRARY MATCHES "\\.a$" AND NOT LIBXML2_LIBRARY MATCHES "\\.dll\\.a$")
  get_target_property(_libxml2_definitions LibXml2::LibXml2 INTERFACE_COMPILE_DEFINITIONS)
  if(NOT "LIBXML_STATIC" IN_LIST _libxml2_definitions)
    set_property(TARGET LibXml2::LibXml2 APPEND PROPERTY INTERFACE_COMPILE_DEFINITIONS LIBXML_STATIC)
  endif()
  unset(_libxml2_definitions)
  if(NOT "-DLIBXML_STATIC" IN_LIST LIBXML2_DEFINITIONS)
    list(APPEND LIBXML2_DEFINITIONS -DLIBXML_STATIC)
  endif()
endif()
