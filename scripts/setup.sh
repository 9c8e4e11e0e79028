#!/usr/bin/env bash
# Installs what building and testing need, when it is missing.
#   scripts/setup.sh            compiler, CMake, Ninja, Boost headers, GoogleTest, and pugixml,
#                               utf8proc, CLI11 and nlohmann-json for the catalogue component
#   scripts/setup.sh --ci       also clang (fuzzing, sanitizer runtimes) and clang-tidy
#   scripts/setup.sh --bench    also Google Benchmark and gnuplot
#   scripts/setup.sh --windows  also MinGW-w64, Wine and the GoogleTest sources (Windows cross build)
# As root it runs apt-get; otherwise it prints the command to run and fails.
set -euo pipefail

packages=(g++ cmake ninja-build libboost-dev libgtest-dev libgmock-dev libpugixml-dev libutf8proc-dev libcli11-dev nlohmann-json3-dev)
for arg in "$@"; do
  case "$arg" in
    --ci) packages+=(clang libclang-rt-14-dev clang-tidy clang-format libbenchmark-dev) ;;
    --bench) packages+=(libbenchmark-dev gnuplot-nox) ;;
    --windows) packages+=(g++-mingw-w64-x86-64-posix wine wine64 googletest) ;;
    *) echo "setup.sh: unknown option $arg" >&2; exit 2 ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
  echo "Missing packages. Run as root:" >&2
  echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
  exit 1
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}"
