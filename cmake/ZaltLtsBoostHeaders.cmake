# zalt_lts_boost_headers(<dir>)
#
# Defines the target Boost::headers from <dir>, the directory of the Boost
# headers (the one holding version.hpp), and from nothing else. Boost's own
# CMake package on Debian puts all of /usr/include on the include path; in a
# cross build the host's C headers there would shadow the target's, so such a
# build gets an include root that holds only a link named boost to <dir>.
function(zalt_lts_boost_headers dir)
  if(TARGET Boost::headers)
    return()
  endif()
  if(NOT EXISTS ${dir}/version.hpp)
    message(FATAL_ERROR "No Boost headers in ${dir} (expected ${dir}/version.hpp)")
  endif()
  set(root ${CMAKE_BINARY_DIR}/boost-headers)
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${dir} ${root}/boost SYMBOLIC)
  add_library(Boost::headers INTERFACE IMPORTED)
  set_target_properties(Boost::headers PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${root})
endfunction()
