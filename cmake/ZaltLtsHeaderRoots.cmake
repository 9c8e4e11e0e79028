# zalt_lts_header_root(<target> <name> <dir> <marker>)
#
# Defines the INTERFACE IMPORTED target <target> for the header-only library
# whose headers are in <dir> (which must hold <marker>), included as
# <name/...>. Debian's CMake packages of Boost, CLI11 and nlohmann-json put all
# of /usr/include on the include path; in a cross build the host's C headers
# there would shadow the target's. So the target's include path is a root in
# the build tree that holds nothing but a link named <name> to <dir>.
function(zalt_lts_header_root target name dir marker)
  if(TARGET ${target})
    return()
  endif()
  if(NOT EXISTS ${dir}/${marker})
    message(FATAL_ERROR "No ${target} headers in ${dir} (expected ${dir}/${marker})")
  endif()
  set(root ${CMAKE_BINARY_DIR}/header-roots/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${dir} ${root}/${name} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${root})
endfunction()

# zalt_lts_boost_headers(<dir>): Boost::headers from <dir>, the directory that
# holds Boost's version.hpp.
function(zalt_lts_boost_headers dir)
  zalt_lts_header_root(Boost::headers boost ${dir} version.hpp)
endfunction()
