# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DCONSUMER_SOURCE_DIR=... -DWORK_DIR=... -DGENERATOR=... -DCONFIG=...
#       -DEXECUTABLE=<consumer file name> -DCATALOGUE=ON|OFF
#       [-DTOOLCHAIN_FILE=... -DBOOST_HEADERS=... -DEMULATOR=...] -P RunPackageTest.cmake
# Builds the consumer against the installed package, then with the library added as a subdirectory.
# With CATALOGUE, the catalogue consumer too, and the installed tool checks the walkthrough's catalogue.
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "failed (${result}): ${command}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

set(configure_options -G ${GENERATOR} -DCMAKE_BUILD_TYPE=${CONFIG})
if(TOOLCHAIN_FILE)
  # The toolchain searches the target's tree only; the prefix becomes part of it.
  list(APPEND configure_options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE} -DCMAKE_FIND_ROOT_PATH=${prefix})
endif()
if(BOOST_HEADERS)
  list(APPEND configure_options -DZALT_LTS_BOOST_HEADERS=${BOOST_HEADERS})
endif()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG})
run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/build ${configure_options}
    -DCMAKE_PREFIX_PATH=${prefix} -DWITH_CATALOGUE=${CATALOGUE})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${EMULATOR} ${WORK_DIR}/build/${EXECUTABLE})
if(CATALOGUE)
  run(${WORK_DIR}/build/catalogue_consumer)
  run(${prefix}/bin/zalt-lts-catalogue check ${SOURCE_DIR}/examples/catalogue/walkthrough.xml)
endif()

run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/subdirectory ${configure_options}
    -DZALT_LTS_SOURCE_DIR=${SOURCE_DIR})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory --target consumer)
run(${EMULATOR} ${WORK_DIR}/subdirectory/${EXECUTABLE})
if(CATALOGUE)
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory --target catalogue_consumer)
  run(${WORK_DIR}/subdirectory/catalogue_consumer)
endif()
