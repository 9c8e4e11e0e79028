# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DCONSUMER_SOURCE_DIR=... -DWORK_DIR=... -DGENERATOR=... -DCONFIG=...
#       -DCATALOGUE=ON|OFF [-DEXECUTABLE_SUFFIX=.exe]
#       [-DTOOLCHAIN_FILE=... -DFIND_ROOT_PATH=... -DBOOST_HEADERS=... -DCLI11_HEADERS=...
#        -DNLOHMANN_JSON_HEADERS=... -DEMULATOR=...] -P RunPackageTest.cmake
# Builds the consumer against the installed package, then with the library added as a subdirectory.
# With CATALOGUE, the catalogue consumer too, and the installed tool checks the walkthrough's catalogue.
# FIND_ROOT_PATH holds the build's own roots (a cross build's libxml2 and utf8proc), which the
# subdirectory build needs again; the installed package does not.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/RunChecked.cmake)

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

set(configure_options -G ${GENERATOR} -DCMAKE_BUILD_TYPE=${CONFIG})
if(TOOLCHAIN_FILE)
  # The toolchain searches the target's tree only; the prefix becomes part of
  # it. A list does not survive a -D option here, hence the initial cache.
  set(roots ${prefix} ${FIND_ROOT_PATH})
  file(WRITE ${WORK_DIR}/find-root-path.cmake "set(CMAKE_FIND_ROOT_PATH [==[${roots}]==] CACHE STRING \"\")\n")
  list(APPEND configure_options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE} -C ${WORK_DIR}/find-root-path.cmake)
endif()
foreach(headers IN ITEMS BOOST CLI11 NLOHMANN_JSON)
  if(${headers}_HEADERS)
    list(APPEND configure_options -DZALT_LTS_${headers}_HEADERS=${${headers}_HEADERS})
  endif()
endforeach()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG})
run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/build ${configure_options}
    -DCMAKE_PREFIX_PATH=${prefix} -DWITH_CATALOGUE=${CATALOGUE})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${EMULATOR} ${WORK_DIR}/build/consumer${EXECUTABLE_SUFFIX})
if(CATALOGUE)
  run(${EMULATOR} ${WORK_DIR}/build/catalogue_consumer${EXECUTABLE_SUFFIX})
  # From the source root: on Windows the tool's CLI11 takes an argument that
  # begins with / for an option, so the catalogue is named relative to it.
  execute_process(COMMAND ${EMULATOR} ${prefix}/bin/zalt-lts-catalogue${EXECUTABLE_SUFFIX}
                          check examples/catalogue/walkthrough.xml
    WORKING_DIRECTORY ${SOURCE_DIR} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): the installed zalt-lts-catalogue check examples/catalogue/walkthrough.xml")
  endif()
endif()

run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/subdirectory ${configure_options}
    -DZALT_LTS_SOURCE_DIR=${SOURCE_DIR})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory --target consumer)
run(${EMULATOR} ${WORK_DIR}/subdirectory/consumer${EXECUTABLE_SUFFIX})
if(CATALOGUE)
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory --target catalogue_consumer)
  run(${EMULATOR} ${WORK_DIR}/subdirectory/catalogue_consumer${EXECUTABLE_SUFFIX})
endif()
