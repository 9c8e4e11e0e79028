# cmake -DGUIDE=<guide.md> -DBUILD_DIR=... -DWORK_DIR=... -DGENERATOR=... -DCONFIG=... -DCATALOGUE=ON|OFF
#       -P RunGuideTest.cmake
#
# Builds what docs/guide.md shows, as a reader would, against the package
# installed into a scratch prefix:
#  - "## Your first program": its one C++ block is written to main.cpp, its one
#    CMake block to CMakeLists.txt, and its last shell block (the commands that
#    build and run the program, with /opt/zalt standing for the prefix) is run
#    in that directory; the program must print exactly the text block that
#    follows those commands.
#  - every other level-2 section: its C++ blocks, in order, form one
#    translation unit, which must compile without warnings and link into a
#    shared library with no undefined symbol. A section that includes a
#    catalogue header is built only when the package has the catalogue.
#  - the table of names mentions every installed header meant for users.
#  - find_package with an unknown component names the known ones.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/RunChecked.cmake)

# --- Read the guide into sections and their fenced blocks ---------------------

file(READ ${GUIDE} guide)
string(REPLACE "\r\n" "\n" guide "${guide}")

set(rest "\n${guide}")
set(line 0)  # the line of the guide at which `rest` starts, counting from 0 for the added newline
set(sections 0)
set(section_0_title "(before the first section)")
set(section_0_blocks "")

# Advances `rest` by `length` characters and `line` by the line ends skipped.
macro(consume length)
  string(SUBSTRING "${rest}" 0 ${length} consumed)
  string(REGEX MATCHALL "\n" line_ends "${consumed}")
  list(LENGTH line_ends skipped)
  math(EXPR line "${line} + ${skipped}")
  string(SUBSTRING "${rest}" ${length} -1 rest)
endmacro()

while(TRUE)
  string(FIND "${rest}" "\n## " heading)
  string(FIND "${rest}" "\n```" fence)
  if(heading EQUAL -1 AND fence EQUAL -1)
    break()
  endif()
  if(NOT heading EQUAL -1 AND (fence EQUAL -1 OR heading LESS fence))
    math(EXPR title_start "${heading} + 4")
    consume(${title_start})
    string(FIND "${rest}" "\n" title_end)
    string(SUBSTRING "${rest}" 0 ${title_end} title)
    math(EXPR sections "${sections} + 1")
    set(section_${sections}_title "${title}")
    set(section_${sections}_blocks "")
    continue()
  endif()

  math(EXPR info_start "${fence} + 4")
  consume(${info_start})
  string(FIND "${rest}" "\n" info_end)
  string(SUBSTRING "${rest}" 0 ${info_end} info)
  math(EXPR body_start "${info_end} + 1")
  consume(${body_start})
  set(body_line ${line})
  string(FIND "${rest}" "\n```" close)
  if(close EQUAL -1)
    message(FATAL_ERROR "${GUIDE}:${body_line}: a code block is not closed")
  endif()
  string(SUBSTRING "${rest}" 0 ${close} body)
  math(EXPR after_fence "${close} + 4")
  consume(${after_fence})

  # Each block is kept by kind, in order, with the guide line of its first line.
  set(kind "${info}")
  if(kind STREQUAL "")
    set(kind "plain")
  endif()
  list(LENGTH section_${sections}_blocks index)
  list(APPEND section_${sections}_blocks "${kind}")
  set(section_${sections}_block_${index} "${body}")
  set(section_${sections}_block_${index}_line ${body_line})
endwhile()

if(sections EQUAL 0 OR NOT section_1_title STREQUAL "Your first program")
  message(FATAL_ERROR "${GUIDE} must open with the section \"## Your first program\"")
endif()
if(NOT "${section_0_blocks}" STREQUAL "")
  message(FATAL_ERROR "${GUIDE} has code blocks before its first section")
endif()

# --- Install the package -------------------------------------------------------

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG})
# The guide's commands use CMake's default generator; take the build's.
set(ENV{CMAKE_GENERATOR} "${GENERATOR}")

# --- The table of names ---------------------------------------------------------

# Headers under Private/ hold the library's internals, which public headers
# include; Throw.h and the generated export headers serve the library's own
# sources. Every other installed header is what users include.
file(GLOB_RECURSE headers RELATIVE ${prefix}/include ${prefix}/include/Tovra/*.h ${prefix}/include/Zalt/*.h)
set(missing "")
foreach(header IN LISTS headers)
  if(header MATCHES "/Private/" OR header MATCHES "Export\\.h$" OR header STREQUAL "Zalt/Errors/Throw.h")
    continue()
  endif()
  string(FIND "${guide}" "| `${header}` |" found)
  if(found EQUAL -1)
    string(APPEND missing "\n  ${header}")
  endif()
endforeach()
if(NOT missing STREQUAL "")
  message(FATAL_ERROR "${GUIDE}: the table of names has no row for these installed headers:${missing}")
endif()

# --- Your first program -----------------------------------------------------------

set(first_cpp "")
set(first_cmake "")
set(first_commands "")
set(first_output "")
set(index 0)
foreach(kind IN LISTS section_1_blocks)
  set(body "${section_1_block_${index}}")
  if(kind STREQUAL "cpp")
    if(NOT first_cpp STREQUAL "")
      message(FATAL_ERROR "${GUIDE}: \"Your first program\" must hold one C++ block, the whole program")
    endif()
    set(first_cpp "${body}\n")
  elseif(kind STREQUAL "cmake")
    if(NOT first_cmake STREQUAL "")
      message(FATAL_ERROR "${GUIDE}: \"Your first program\" must hold one CMake block, its CMakeLists.txt")
    endif()
    set(first_cmake "${body}\n")
  elseif(kind STREQUAL "sh")
    set(first_commands "${body}")
    set(first_output "")
  elseif(kind STREQUAL "text" AND NOT first_commands STREQUAL "" AND first_output STREQUAL "")
    set(first_output "${body}\n")
  endif()
  math(EXPR index "${index} + 1")
endforeach()
if(first_cpp STREQUAL "" OR first_cmake STREQUAL "" OR first_commands STREQUAL "" OR first_output STREQUAL "")
  message(FATAL_ERROR "${GUIDE}: \"Your first program\" needs a C++ block, a CMake block, the commands "
                      "that build and run it and, after them, a text block with what it prints")
endif()

set(first_dir ${WORK_DIR}/first-program)
file(WRITE ${first_dir}/main.cpp "${first_cpp}")
file(WRITE ${first_dir}/CMakeLists.txt "${first_cmake}")

# Each line is one command; the last one runs the program.
string(REPLACE "/opt/zalt" "${prefix}" first_commands "${first_commands}")
string(REPLACE "\n" ";" command_lines "${first_commands}")
set(printed "")
foreach(command_line IN LISTS command_lines)
  if(command_line MATCHES "^[ ]*(#.*)?$")
    continue()
  endif()
  separate_arguments(command UNIX_COMMAND "${command_line}")
  execute_process(COMMAND ${command} WORKING_DIRECTORY ${first_dir}
    RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${GUIDE}: \"${command_line}\" failed (${result}):\n${printed}${errors}")
  endif()
endforeach()
if(NOT printed STREQUAL first_output)
  message(FATAL_ERROR "${GUIDE}: the first program printed\n${printed}\ninstead of\n${first_output}")
endif()

# --- Every later section: one translation unit each ----------------------------------

set(targets "")
set(with_catalogue OFF)
set(project_dir ${WORK_DIR}/sections)
foreach(section RANGE 2 ${sections})
  set(source "")
  set(index 0)
  foreach(kind IN LISTS section_${section}_blocks)
    if(kind STREQUAL "cpp")
      # #line sends every compiler message to the guide's own line.
      string(APPEND source "#line ${section_${section}_block_${index}_line} \"${GUIDE}\"\n"
                           "${section_${section}_block_${index}}\n")
    endif()
    math(EXPR index "${index} + 1")
  endforeach()
  if(source STREQUAL "")
    continue()
  endif()
  set(library Zalt::Lts)
  if(source MATCHES "#include <Zalt/Catalogue/")
    if(NOT CATALOGUE)
      message(STATUS "skipped \"${section_${section}_title}\": the package has no catalogue component")
      continue()
    endif()
    set(library Zalt::LtsCatalogue)
    set(with_catalogue ON)
  endif()
  message(STATUS "section ${section}: \"${section_${section}_title}\"")
  file(WRITE ${project_dir}/section${section}.cpp "${source}")
  string(APPEND targets "add_library(section${section} SHARED section${section}.cpp)\n"
                        "target_link_libraries(section${section} PRIVATE ${library})\n")
endforeach()
if(targets STREQUAL "")
  message(FATAL_ERROR "${GUIDE}: no section after the first holds C++ code")
endif()

set(components "")
if(with_catalogue)
  set(components "COMPONENTS Catalogue")
endif()
file(WRITE ${project_dir}/CMakeLists.txt
  "cmake_minimum_required(VERSION 3.25)\n"
  "project(GuideSections LANGUAGES CXX)\n"
  "find_package(Zalt_Lts CONFIG REQUIRED ${components})\n"
  "set(CMAKE_CXX_STANDARD 17)\n"
  "set(CMAKE_CXX_STANDARD_REQUIRED ON)\n"
  "add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)\n"
  "add_link_options(-Wl,--no-undefined)\n"
  "${targets}")
run(${CMAKE_COMMAND} -S ${project_dir} -B ${project_dir}/build -DCMAKE_BUILD_TYPE=${CONFIG}
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${project_dir}/build)

# --- A component the package does not have -----------------------------------------

set(probe_dir ${WORK_DIR}/unknown-component)
file(WRITE ${probe_dir}/CMakeLists.txt
  "cmake_minimum_required(VERSION 3.25)\n"
  "project(UnknownComponent LANGUAGES CXX)\n"
  "find_package(Zalt_Lts CONFIG COMPONENTS Catalog)\n"
  "if(Zalt_Lts_FOUND)\n"
  "  message(FATAL_ERROR \"Zalt_Lts found with the unknown component Catalog\")\n"
  "endif()\n")
execute_process(COMMAND ${CMAKE_COMMAND} -S ${probe_dir} -B ${probe_dir}/build -DCMAKE_PREFIX_PATH=${prefix}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0 OR NOT "${output}${errors}" MATCHES "no component \"Catalog\"\\.[ \n]+Its[ \n]+known[ \n]+components[ \n]+are:[ \n]+Catalogue")
  message(FATAL_ERROR "find_package(Zalt_Lts COMPONENTS Catalog) should report the unknown component and "
                      "name the known ones (${result}):\n${output}${errors}")
endif()
