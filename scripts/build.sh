#!/usr/bin/env bash
# Configures and builds the Windows (cross) build in build/windows and, with --native, the
# sanitizer build of the portable code in build/native and the Linux host and plug-in in
# build/linux. --linux builds only those: build/linux/bin/fmhost and libFMWrapper.so (Release, no
# sanitizers), which ./fmhost --linux runs, and the plug-in's release form
# build/linux/bin/Vantafile.fmx (the C++ runtime inside), then runs its ELF and load checks.
# --arm64 alone builds the arm64 Linux tree instead (build/linux-arm64, Release, cross-compiled
# with Debian's aarch64 GCC; its tests run under qemu, see scripts/qemu-arm64.sh).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"
jobs=$(nproc)

# shellcheck source=ccache-launcher.sh
source "$root/scripts/ccache-launcher.sh"

linux_release() {
    cmake -S "$root" -B "$build/linux" -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF \
          "${launcher[@]}" >/dev/null
    cmake --build "$build/linux" -j"$jobs" --target fmhost FMWrapper HostFixture Vantafile \
          vf_codec_link_probe vf_bare_load
    ctest --test-dir "$build/linux" -L linux-plugin --output-on-failure
}

if [ "${1:-}" = "--linux" ]; then
    linux_release
    exit 0
fi

if [ "${1:-}" = "--arm64" ]; then
    cmake -S "$root" -B "$build/linux-arm64" -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF \
          -DCMAKE_TOOLCHAIN_FILE="$root/cmake/aarch64-linux-gnu.cmake" \
          --no-warn-unused-cli "${launcher[@]}" >/dev/null
    cmake --build "$build/linux-arm64" -j"$jobs"
    exit 0
fi

cmake -S "$root" -B "$build/windows" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" "${launcher[@]}" >/dev/null
cmake --build "$build/windows" -j"$jobs"

if [ "${1:-}" = "--native" ]; then
    cmake -S "$root" -B "$build/native" -DCMAKE_BUILD_TYPE=Debug "${launcher[@]}" >/dev/null
    cmake --build "$build/native" -j"$jobs"
    linux_release
fi
