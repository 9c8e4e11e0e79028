#!/usr/bin/env bash
# Builds the libraries that Debian ships for Linux only for the Windows cross
# build, from Debian's own source packages, as static libraries, with the
# project's MinGW-w64 toolchain:
#   scripts/windows-deps.sh [<prefix> [<work-dir>]]
# into <prefix> (default build/windows-deps/prefix, which the windows preset
# searches), with the sources and their builds in <work-dir> (default
# build/windows-deps/src). Both lie outside build/windows, so a fresh build of
# the project does not rebuild them. They are libxml2 and utf8proc (catalogue
# reader), nettle (the catalogue's SHA-256 digest), and FreeType, HarfBuzz,
# FriBidi and libpng (display component); zlib, which libpng needs, is
# Debian's own MinGW build (libz-mingw-w64-dev).
#
# Static, because they stay private to the project's DLLs: linked into them,
# they need no DLLs of their own beside every program, export nothing (each
# DLL exports only what it marks), and cannot be swapped for a differently
# configured DLL of the same name on a device maker's machine. None of them
# installs programs, tests or manuals that the cross build does not use.
#
# The sources come from `apt-get source`; nothing else is downloaded. When no
# source list is enabled, one is added for the suites that debian.sources
# already configures (as root; otherwise the commands are printed and the
# script fails, as setup.sh does). A package already installed in <prefix> at
# the same Debian version is skipped; another version there is refused rather
# than mixed. The build uses up to CMAKE_BUILD_PARALLEL_LEVEL jobs (default 2),
# and reports the time each package took.
set -euo pipefail
cd "$(dirname "$0")/.."

mkdir -p "${1:-build/windows-deps/prefix}" "${2:-build/windows-deps/src}"
prefix=$(cd "${1:-build/windows-deps/prefix}" && pwd)
work=$(cd "${2:-build/windows-deps/src}" && pwd)
toolchain=$PWD/cmake/mingw-w64-x86_64.cmake
jobs=${CMAKE_BUILD_PARALLEL_LEVEL:-2}
# The compiler that the toolchain file names, for the packages that configure
# with their own scripts: the POSIX-threads variant, whose runtime the
# project's DLLs share.
host=x86_64-w64-mingw32
host_cc=$host-gcc-posix
# Those packages' own optimisation, as Debian builds them, without the debug
# information that their defaults add: the CMake packages build Release too.
host_cflags=-O2

packages=(libxml2 utf8proc nettle libpng1.6 freetype harfbuzz fribidi)
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
    fetch_newest_served "$package"
    dir=$(find "$work" -maxdepth 1 -type d -name "$package-[0-9]*" | sort | tail -n 1)
  fi
  [ -f "$dir/debian/changelog" ] || { echo "windows-deps.sh: no source tree of $package in $work" >&2; exit 1; }
  printf '%s\n' "$dir"
}

# fetch_newest_served <package>: fetches the newest version of its source that
# the mirror serves. A mirror may list a security update in its index before
# its pool holds the files (apt-get then fails with 404), so each older
# version it lists is tried in turn, newest first.
fetch_newest_served() {
  local package=$1 version
  for version in $(apt-cache showsrc --only-source "$package" | sed -n 's/^Version: //p' | newest_first); do
    if (cd "$work" && apt-get source -qq "$package=$version" >/dev/null 2>&1); then
      return
    fi
    echo "windows-deps.sh: $package $version is listed but not served; trying an older version" >&2
  done
  echo "windows-deps.sh: no version of the source package $package could be fetched" >&2
  exit 1
}

# newest_first: sorts the Debian versions on standard input by dpkg's order
# (which `sort -V` does not follow for ~ and epochs), newest first.
newest_first() {
  local sorted=() version i
  while read -r version; do
    i=0
    while [ "$i" -lt ${#sorted[@]} ] && dpkg --compare-versions "${sorted[i]}" gt "$version"; do
      i=$((i + 1))
    done
    sorted=("${sorted[@]:0:i}" "$version" "${sorted[@]:i}")
  done
  printf '%s\n' "${sorted[@]}"
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

# build <package> <source-dir> <step> <argument>...: runs
#   <step> <source-dir> <build-dir> <log> <argument>...
# to configure, build and install it into $prefix, from a fresh build
# directory, then leaves a stamp with its Debian version in the prefix. A
# failed build leaves none, so the next run starts it again.
build() {
  local package=$1 source=$2 step=$3 version stamp start
  shift 3
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
  mkdir -p "$build_dir"
  "$step" "$source" "$build_dir" "$log" "$@"
  mkdir -p "$(dirname "$stamp")"
  echo "$version static" >"$stamp"
  echo "$package $version for MinGW-w64 (static) in $prefix: $((SECONDS - start)) s"
}

# cmake_install <source-dir> <build-dir> <log> [--component <name>] <cmake-option>...:
# a CMake package, installing only the named install component when given.
cmake_install() {
  local source=$1 build_dir=$2 log=$3 component=""
  shift 3
  if [ "${1:-}" = --component ]; then
    component=$2
    shift 2
  fi
  # --no-warn-unused-cli: not every package has BUILD_TESTING.
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
}

# configure_host <source-dir> <build-dir> <log> <configure-option>...: runs a
# package's own configure script in <build-dir> for a static library that
# runs on Windows, built with the toolchain's compiler (ar and ranlib follow
# from --host).
configure_host() {
  local source=$1 build_dir=$2 log=$3
  shift 3
  (cd "$build_dir" && logged "$log" "$source/configure" --host="$host" CC="$host_cc" CFLAGS="$host_cflags" \
    --prefix="$prefix" --libdir="$prefix/lib" --enable-static --disable-shared "$@")
}

# nettle: only libnettle with its headers and pkg-config file. The Makefile's
# default target would also build its tools, examples and tests; they are not
# wanted here. Debian's patch edits aclocal.m4 and configure alike, which
# leaves aclocal.m4 newer than config.h.in, so make would regenerate the latter
# with autoheader (not installed, and with the same result): AUTOHEADER=:.
# CFLAGS again on make's command line, because configure appends -ggdb3.
install_nettle() {
  local source=$1 build_dir=$2 log=$3
  shift 3
  configure_host "$source" "$build_dir" "$log" "$@"
  logged "$log" make -C "$build_dir" -j "$jobs" AUTOHEADER=: CFLAGS="$host_cflags" libnettle.a
  logged "$log" make -C "$build_dir" AUTOHEADER=: install-headers install-static install-pkgconfig
}

# fribidi: only its library (lib/), whose Unicode tables ship generated in the
# source, with its headers and pkg-config file; not the table generators that
# the top-level build would compile and run, nor its program, manual or tests.
# libtool's .la file is dropped: nothing here links through libtool.
install_fribidi() {
  local source=$1 build_dir=$2 log=$3
  shift 3
  configure_host "$source" "$build_dir" "$log" "$@"
  logged "$log" make -C "$build_dir/lib" -j "$jobs"
  logged "$log" make -C "$build_dir/lib" install
  logged "$log" make -C "$build_dir" install-pkgconfigDATA
  rm -f "$prefix/lib/libfribidi.la"
}

# freetype: FT_DISABLE_ZLIB only keeps the machine's zlib out; FreeType then
# compiles its own copy of zlib's inflate into the library, under zlib's own
# global names, and a program that links libpng with Debian's libz.a as well
# fails with duplicate definitions of inflateInit_, crc32 and others. Without
# FT_CONFIG_OPTION_USE_ZLIB in its option header, which the installed header
# then shares, gzip-compressed fonts are reported as unsupported instead.
# The edit is made in the unpacked source, where each run finds it done.
install_freetype() {
  local source=$1
  sed -i 's|^#define FT_CONFIG_OPTION_USE_ZLIB$|/* #define FT_CONFIG_OPTION_USE_ZLIB */|' \
    "$source/include/freetype/config/ftoption.h"
  grep -q '^/\* #define FT_CONFIG_OPTION_USE_ZLIB \*/$' "$source/include/freetype/config/ftoption.h" || {
    echo "windows-deps.sh: FreeType's option header no longer has FT_CONFIG_OPTION_USE_ZLIB" >&2
    exit 1
  }
  cmake_install "$@"
}

enable_source_lists
libxml2_source=$(fetch libxml2)
utf8proc_source=$(fetch utf8proc)
nettle_source=$(fetch nettle)
libpng_source=$(fetch libpng1.6)
freetype_source=$(fetch freetype)
harfbuzz_source=$(fetch harfbuzz)
fribidi_source=$(fetch fribidi)

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
build libxml2 "$libxml2_source" cmake_install --component development \
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
build utf8proc "$utf8proc_source" cmake_install -DUTF8PROC_INSTALL=ON -DUTF8PROC_ENABLE_TESTING=OFF

# nettle: the symmetric half only. --disable-public-key leaves out hogweed
# (RSA, DSA, elliptic curves) and with it GMP; --disable-openssl the
# comparison code of its benchmarks; --disable-documentation its manual. The
# digest is computed by nettle's portable C code: --disable-assembler spares
# the x86-64 assembly and its m4 preprocessing, and with it the CPU detection
# at start-up of the "fat" build, for a digest of catalogue files whose time
# goes into reading and parsing them.
build nettle "$nettle_source" install_nettle \
  --disable-public-key --disable-openssl --disable-documentation --disable-assembler

# libpng: the static library only (no DLL, no pngfix or png-fix-itxt, no
# tests), against Debian's static MinGW zlib (libz.a, which the toolchain file
# has FindZLIB prefer), so that a program linking libpng needs no zlib DLL
# either. The x86 SSE2 filters stay on, as in Debian's build.
build libpng1.6 "$libpng_source" cmake_install \
  -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_EXECUTABLES=OFF -DPNG_TESTS=OFF

# FreeType: rasteriser and font drivers without the optional libraries it
# would otherwise take from the machine when found: no zlib or bzip2 for
# compressed fonts, no libpng for colour bitmap glyphs, no Brotli for WOFF2,
# and no HarfBuzz for its auto-hinter (HarfBuzz is built without FreeType
# below, so the two stay independent).
build freetype "$freetype_source" install_freetype \
  -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON -DFT_DISABLE_BROTLI=ON -DFT_DISABLE_HARFBUZZ=ON

# HarfBuzz: its core only, with its own OpenType font functions
# (hb_ot_font_set_funcs), built by its CMake project as one translation unit.
# FreeType, glib, ICU, Graphite, GObject, introspection, the Windows shapers
# and the utilities are off by default there and stay off; the subsetter is
# turned off. Without a Threads package it guards its caches with Windows
# critical sections instead of winpthreads' mutexes, so the library needs
# nothing beyond the C runtime and kernel32; it uses no C++ standard library.
build harfbuzz "$harfbuzz_source" cmake_install \
  -DHB_BUILD_SUBSET=OFF -DHB_BUILD_UTILS=OFF -DHB_HAVE_FREETYPE=OFF -DHB_HAVE_GLIB=OFF -DHB_HAVE_ICU=OFF \
  -DHB_HAVE_GRAPHITE2=OFF -DHB_HAVE_GOBJECT=OFF -DHB_HAVE_INTROSPECTION=OFF \
  -DCMAKE_DISABLE_FIND_PACKAGE_Threads=ON

# fribidi: the defaults otherwise (deprecated interfaces kept, no debug
# output). Its headers declare plain extern functions for GCC, so a static
# user needs no define; only MSVC users would need FRIBIDI_STATIC.
build fribidi "$fribidi_source" install_fribidi
