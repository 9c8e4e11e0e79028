# zalt_lts_imported_library(<Package> <Target>): the end that the project's
# find modules share, once they have set <Package>_INCLUDE_DIR,
# <Package>_LIBRARY and <Package>_VERSION from the header and library they
# found. Sets <Package>_FOUND as find_package expects and defines <Target>, an
# imported library with that header directory. A macro, so that what it sets
# reaches find_package's caller as a find module's own variables do.
include(FindPackageHandleStandardArgs)

macro(zalt_lts_imported_library package target)
  find_package_handle_standard_args(${package}
    REQUIRED_VARS ${package}_LIBRARY ${package}_INCLUDE_DIR VERSION_VAR ${package}_VERSION)
  mark_as_advanced(${package}_INCLUDE_DIR ${package}_LIBRARY)
  if(${package}_FOUND AND NOT TARGET ${target})
    add_library(${target} UNKNOWN IMPORTED)
    set_target_properties(${target} PROPERTIES
      IMPORTED_LOCATION ${${package}_LIBRARY}
      INTERFACE_INCLUDE_DIRECTORIES ${${package}_INCLUDE_DIR})
  endif()
endmacro()
