# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DCONSUMER_SOURCE_DIR=... -DWORK_DIR=... -DGENERATOR=... -DCONFIG=...
#       -P RunPackageTest.cmake
# Builds the consumer against the installed package, then with the library added as a subdirectory.
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

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG})
run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${CONFIG})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)

run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/subdirectory -G ${GENERATOR}
    -DZALT_LTS_SOURCE_DIR=${SOURCE_DIR} -DCMAKE_BUILD_TYPE=${CONFIG})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/subdirectory --target consumer)
run(${WORK_DIR}/subdirectory/consumer)
