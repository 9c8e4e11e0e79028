# Cross build for Windows x86-64 with Debian's MinGW-w64 (POSIX threads):
#   cmake --preset windows     (or -DCMAKE_TOOLCHAIN_FILE=<this file>)
#
# Programs built here run under Wine: CTest, the example and the packaging
# test start them through CMAKE_CROSSCOMPILING_EMULATOR.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(ZALT_LTS_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ZALT_LTS_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZALT_LTS_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${ZALT_LTS_MINGW_TRIPLET}-windres)

# Libraries, headers and CMake packages come from the target's tree only, so
# nothing built for the host (a host GoogleTest, Boost's CMake package with
# its /usr/include) can slip into the build. Callers may add roots of their own
# with -DCMAKE_FIND_ROOT_PATH.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${ZALT_LTS_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Debian's MinGW zlib comes as libz.a and as the import library of zlib1.dll;
# FindZLIB (and FindPNG through it) takes the static one, as the libraries
# built beside it are static, so that no zlib DLL has to ship with the DLLs.
set(ZLIB_USE_STATIC_LIBS ON)

# The toolchain's own runtime DLLs (libstdc++, libgcc, winpthread) are linked
# dynamically, as in a deployment where every DLL shares one C++ runtime; the
# emulator puts their directories on Wine's DLL search path.
set(runtime_dirs)
foreach(dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  cmake_path(GET path PARENT_PATH dir)
  cmake_path(NORMAL_PATH dir)
  list(APPEND runtime_dirs ${dir})
endforeach()
list(JOIN runtime_dirs ":" runtime_path)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh ${runtime_path})
