#!/usr/bin/env bash
# Builds libxml2 and utf8proc for the Windows cross build from Debian's own
# source packages, as static libraries, with the project's MinGW-w64 toolchain:
#   scripts/windows-deps.sh [<prefix> [<work-dir>]]
# into <prefix> (default build/windows-deps/prefix, which the windows preset
# searches), with the sources and their builds in <work-dir> (default
# build/windows-deps/src). Both lie outside build/windows, so a fresh build of
# the project does not rebuild them.
#
# Static, because both stay private to Zalt_LtsCatalogue.dll: linked into it,
# they need no DLLs of their own beside every program, export nothing (the
# library exports only what it marks), and cannot be swapped for a differently
# configured DLL of the same name on a device maker's machine.
#
# The sources come from `apt-get source`; nothing else is downloaded. When no
# source list is enabled, one is added for the suites that debian.sources
# already configures (as root; otherwise the commands are printed and the
# script fails, as setup.sh does). A package already installed in <prefix> at
# the same Debian version is skipped; another version there is refused rather
# than mixed. The build uses up to CMAKE_BUILD_PARALLEL_LEVEL jobs (default 2).
set -euo pipefail
cd "$(dirname "$0")/.."

mkdir -p "${1:-build/windows-deps/prefix}" "${2:-build/windows-deps/src}"
prefix=$(cd "${1:-build/windows-deps/prefix}" && pwd)
work=$(cd "${2:-build/windows-deps/src}" && pwd)
toolchain=$PWD/cmake/mingw-w64-x86_64.cmake
jobs=${CMAKE_BUILD_PARALLEL_LEVEL:-2}

packages=(libxml2 utf8proc)
debian_sources=/etc/apt/sources.list.d/debian.sources
source_list=/etc/apt/sources.list.d/zalt-lts-deb-src.sources

# Debian's source lists: the same URIs, suites, components and signing keys as
# the binary ones, in a file of their own.
enable_source_lists() {
  local found
  found=$(apt-cache showsrc --only-source "${packages[@]}" 2>/dev/null | grep -c "^Package:" || true)
  [ "$found" -ge ${#packages[@]} ] && return
  local add_list=false
  if ! grep -rqs '^[^#]*deb-src' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    [ -f "$debian_sources" ] || { echo "windows-deps.sh: no $debian_sources to derive source lists from" >&2; exit 1; }
    add_list=true
  fi
  if [ "$(id -u)" -ne 0 ]; then
    echo "windows-deps.sh: the source packages ${packages[*]} need Debian's source lists. Run as root:" >&2
    if $add_list; then
      echo "  sed 's/^Types:.*\$/Types: deb-src/' $debian_sources > $source_list" >&2
    fi
    echo "  apt-get update" >&2
    exit 1
  fi
  if $add_list; then
    echo "Adding $source_list: source packages for the suites of $debian_sources"
    sed 's/^Types:.*$/Types: deb-src/' "$debian_sources" >"$source_list"
  fi
  apt-get update -qq
}

# fetch <package>: prints the directory of its unpacked source, fetching it
# only the first time. dpkg-source (dpkg-dev) unpacks it and applies Debian's
# patches; apt has checked the files against the signed Release file.
fetch() {
  local package=$1 dir
  dir=$(find "$work" -maxdepth 1 -type d -name "$package-[0-9]*" | sort | tail -n 1)
  if [ -z "$dir" ]; then
    command -v dpkg-source >/dev/null || { echo "windows-deps.sh: dpkg-source is missing (dpkg-dev)" >&2; exit 1; }
    (cd "$work" && apt-get source -qq "$package" >/dev/null)
    dir=$(find "$work" -maxdepth 1 -type d -name "$package-[0-9]*" | sort | tail -n 1)
  fi
  [ -f "$dir/debian/changelog" ] || { echo "windows-deps.sh: no source tree of $package in $work" >&2; exit 1; }
  printf '%s\n' "$dir"
}

# logged <log> <command>...: runs the command with its output in <log>, and
# shows the log's end when it fails.
logged() {
  local log=$1
  shift
  if ! "$@" >>"$log" 2>&1; then
    tail -n 40 "$log" >&2
    echo "windows-deps.sh: failed: $* (whole log: $log)" >&2
    exit 1
  fi
}

# build <package> <source-dir> [--component <name>] <cmake-option>...:
# configures, builds and installs it (only the named install component, when
# given), then leaves a stamp with its Debian version in the prefix. A failed
# build leaves none, so the next run starts it again.
build() {
  local package=$1 source=$2 component="" version stamp start
  shift 2
  if [ "${1:-}" = --component ]; then
    component=$2
    shift 2
  fi
  version=$(dpkg-parsechangelog -l "$source/debian/changelog" -SVersion)
  stamp=$prefix/share/zalt-lts-deps/$package
  if [ -f "$stamp" ]; then
    if [ "$(cat "$stamp")" = "$version static" ]; then
      return
    fi
    echo "windows-deps.sh: $prefix holds $package $(cat "$stamp"), not $version static; remove it to rebuild" >&2
    exit 1
  fi
  start=$SECONDS
  local build_dir=$work/build-$package log=$work/build-$package.log
  rm -rf "$build_dir" "$log"
  # --no-warn-unused-cli: utf8proc has no BUILD_TESTING.
  logged "$log" cmake -S "$source" -B "$build_dir" -G Ninja --log-level=WARNING --no-warn-unused-cli \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DCMAKE_INSTALL_LIBDIR=lib \
    -DBUILD_SHARED_LIBS=OFF \
    -DBUILD_TESTING=OFF \
    "$@"
  logged "$log" cmake --build "$build_dir" --parallel "$jobs"
  logged "$log" cmake --install "$build_dir" ${component:+--component "$component"}
  mkdir -p "$(dirname "$stamp")"
  echo "$version static" >"$stamp"
  echo "$package $version for MinGW-w64 (static) in $prefix: $((SECONDS - start)) s"
}

enable_source_lists
libxml2_source=$(fetch libxml2)
utf8proc_source=$(fetch utf8proc)

# libxml2: the catalogue reader uses its SAX2 push parser and nothing else, so
# the optional modules are left out, and with them what they would pull in:
# no HTTP or FTP client, no zlib or lzma for compressed input, no loader of
# plug-in DLLs, no XML catalogs read from the machine's files, no HTML parser,
# schemas, XPath, XInclude, canonical form, reader or writer interfaces, no
# Python binding, programs or tests. The core that the parser is built with
# stays as libxml2 has it by default: the tree, DTD handling with the regular
# expressions behind content models, serialisation and the SAX1 interface.
# Without iconv and ICU, and without the ISO-8859-2...16 tables, it decodes
# UTF-8, UTF-16, ISO-8859-1 and ASCII only, by its own code; the Linux
# libxml2 goes through iconv and knows many more encodings. Only its
# development files are installed: headers, the library and its CMake and
# pkg-config files, not its 11 MB HTML manual.
#
# LIBXML_STATIC holds for libxml2's own objects too, not only for its users:
# without it each object marks its functions dllexport, and every DLL that
# links the library would export some 900 libxml2 functions beside its own.
# LIBXML_STATIC_FOR_DLL keeps the clean-up that a libxml2 DLL does when it is
# unloaded: it frees the parser's globals and deletes the thread-local key,
# whose destructor would otherwise still point into the unloaded DLL when a
# thread that parsed exits later, and crash it. It changes nothing for users.
#
# Thread support stays on: without it libxml2 keeps its last error and error
# handlers in process-wide variables that every parse writes, so two
# catalogues read on two threads at once would race. On MinGW-w64 it uses
# winpthreads, which the compiler links by default and whose DLL the C++
# runtime needs anyway. (Its Win32 variant would, in a static library, start
# a helper thread for every thread that parses, or need the DllMain of the
# DLL that links it to pass each thread's exit on.)
build libxml2 "$libxml2_source" --component development \
  -DCMAKE_C_FLAGS="-DLIBXML_STATIC -DLIBXML_STATIC_FOR_DLL" \
  -DLIBXML2_WITH_ICONV=OFF -DLIBXML2_WITH_ICU=OFF -DLIBXML2_WITH_ISO8859X=OFF \
  -DLIBXML2_WITH_ZLIB=OFF -DLIBXML2_WITH_LZMA=OFF \
  -DLIBXML2_WITH_HTTP=OFF -DLIBXML2_WITH_FTP=OFF -DLIBXML2_WITH_MODULES=OFF -DLIBXML2_WITH_CATALOG=OFF \
  -DLIBXML2_WITH_HTML=OFF -DLIBXML2_WITH_DOCB=OFF -DLIBXML2_WITH_SCHEMAS=OFF -DLIBXML2_WITH_SCHEMATRON=OFF \
  -DLIBXML2_WITH_XPATH=OFF -DLIBXML2_WITH_XPTR=OFF -DLIBXML2_WITH_XINCLUDE=OFF -DLIBXML2_WITH_C14N=OFF \
  -DLIBXML2_WITH_READER=OFF -DLIBXML2_WITH_WRITER=OFF -DLIBXML2_WITH_PATTERN=OFF \
  -DLIBXML2_WITH_LEGACY=OFF -DLIBXML2_WITH_DEBUG=OFF \
  -DLIBXML2_WITH_PYTHON=OFF -DLIBXML2_WITH_PROGRAMS=OFF -DLIBXML2_WITH_TESTS=OFF \
  -DLIBXML2_WITH_THREADS=ON
build utf8proc "$utf8proc_source" -DUTF8PROC_INSTALL=ON -DUTF8PROC_ENABLE_TESTING=OFF
