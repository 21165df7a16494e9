#!/usr/bin/env bash
# Configures and builds the Windows (cross) build in build/windows and, with --native, the
# sanitizer build of the portable code in build/native.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"
jobs=$(nproc)

# A compiler cache, when the machine has one: rebuilds and other checkouts of the tree reuse it.
launcher=()
if command -v ccache >/dev/null 2>&1; then
    export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$(dirname "$root")}"
    launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

cmake -S "$root" -B "$build/windows" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" "${launcher[@]}" >/dev/null
cmake --build "$build/windows" -j"$jobs"

if [ "${1:-}" = "--native" ]; then
    cmake -S "$root" -B "$build/native" -DCMAKE_BUILD_TYPE=Debug "${launcher[@]}" >/dev/null
    cmake --build "$build/native" -j"$jobs"
fi
