# zalt_lts_add_library(<target> NAMESPACE <ns> NAME <name> EXPORT_HEADER <path> SOURCES <file>... LINKS <targets>...)
#
# SOURCES are paths relative to src/.
#
# Declares one of the project's shared libraries the same way for all four:
# hidden symbols with a generated export header, relative __FILE__ paths, the
# project's warning set, an alias <ns>::<name> and an export name that matches
# it, so that in-tree users and users of the installed package write the same
# target names.
include(GenerateExportHeader)

set(ZALT_LTS_GENERATED_INCLUDE_DIR ${PROJECT_BINARY_DIR}/generated/include)

function(zalt_lts_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${ZALT_LTS_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

function(zalt_lts_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAMESPACE;NAME;EXPORT_HEADER" "SOURCES;LINKS")

  list(TRANSFORM arg_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/src/ OUTPUT_VARIABLE sources)

  add_library(${target} SHARED ${sources})
  add_library(${arg_NAMESPACE}::${arg_NAME} ALIAS ${target})

  string(TOUPPER ${target} upper)
  generate_export_header(${target}
    BASE_NAME ${upper}
    EXPORT_FILE_NAME ${ZALT_LTS_GENERATED_INCLUDE_DIR}/${arg_EXPORT_HEADER})

  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${arg_NAME}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    # The installed libraries find each other wherever the prefix is moved.
    INSTALL_RPATH "$ORIGIN"
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})

  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<BUILD_INTERFACE:${ZALT_LTS_GENERATED_INCLUDE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${arg_LINKS})
  target_compile_features(${target} PUBLIC cxx_std_17)

  # Exceptions report __FILE__; keep build-machine paths out of the binaries.
  target_compile_options(${target} PRIVATE
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/src/=)
  zalt_lts_warnings(${target})
endfunction()
