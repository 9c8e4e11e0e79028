#!/usr/bin/env bash
# Installs what building and testing need, when it is missing.
#   scripts/setup.sh            compiler, CMake, Ninja, Boost headers, GoogleTest, and libxml2,
#                               utf8proc, nettle (SHA-256), CLI11 and nlohmann-json for the catalogue
#                               component; HarfBuzz, FreeType, FriBidi and libpng for the display
#                               component; and for its tests translate-toolkit (XLIFF interop),
#                               fonts, hb-shape (reference widths) and Chromium (pictures' page)
#   scripts/setup.sh --ci       also clang (fuzzing, sanitizer runtimes) and clang-tidy
#   scripts/setup.sh --bench    also Google Benchmark and gnuplot
#   scripts/setup.sh --windows  also MinGW-w64, Wine and the GoogleTest sources (Windows cross build),
#                               then builds libxml2, utf8proc, nettle, FreeType, HarfBuzz, FriBidi and
#                               libpng for it from Debian's source packages (scripts/windows-deps.sh,
#                               into build/windows-deps/prefix)
# As root it runs apt-get; otherwise it prints the command to run and fails.
set -euo pipefail
cd "$(dirname "$0")/.."

windows=false
packages=(g++ cmake ninja-build libboost-dev libgtest-dev libgmock-dev
  libxml2-dev libutf8proc-dev nettle-dev libcli11-dev nlohmann-json3-dev
  libharfbuzz-dev libfreetype-dev libfribidi-dev libpng-dev
  translate-toolkit fonts-dejavu-core fonts-droid-fallback libharfbuzz-bin chromium)
for arg in "$@"; do
  case "$arg" in
    --ci) packages+=(clang libclang-rt-14-dev clang-tidy clang-format libbenchmark-dev) ;;
    --bench) packages+=(libbenchmark-dev gnuplot-nox) ;;
    # dpkg-dev unpacks the source packages that windows-deps.sh fetches; Debian's
    # MinGW zlib is the one that libpng links.
    --windows) packages+=(g++-mingw-w64-x86-64-posix wine wine64 googletest dpkg-dev libz-mingw-w64-dev) windows=true ;;
    *) echo "setup.sh: unknown option $arg" >&2; exit 2 ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -ne 0 ]; then
    echo "Missing packages. Run as root:" >&2
    echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
    exit 1
  fi
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# Debian ships the libraries that the catalogue and display components link
# for Linux only; the cross build gets its own, built from the same sources. Quick when they are already there.
if $windows; then
  scripts/windows-deps.sh
fi
