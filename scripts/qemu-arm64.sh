#!/usr/bin/env bash
# Runs an arm64 Linux program on this machine under qemu's user-mode emulator, with the arm64
# loader and libraries of the multiarch packages. CTest runs the arm64 tests through it.
#   scripts/qemu-arm64.sh PROGRAM [ARGS...]
# VF_QEMU_ARM64_ROOT overrides the library root (default: the cross toolchain's sysroot, whose
# lib/ holds ld-linux-aarch64.so.1; /usr/lib/aarch64-linux-gnu is searched as well).
set -euo pipefail
if [ $# -lt 1 ]; then
    echo "usage: qemu-arm64.sh PROGRAM [ARGS...]" >&2
    exit 2
fi
qemu=$(command -v qemu-aarch64 || command -v qemu-aarch64-static || true)
if [ -z "$qemu" ]; then
    echo "qemu-arm64.sh: no qemu-aarch64 here (apt-get install qemu-user)" >&2
    exit 127
fi
sysroot="${VF_QEMU_ARM64_ROOT:-/usr/aarch64-linux-gnu}"
# The multiarch libraries (libdeflate0:arm64, zlib1g:arm64) live outside the cross sysroot.
library_path="$sysroot/lib:/usr/lib/aarch64-linux-gnu:/lib/aarch64-linux-gnu"
exec "$qemu" -L "$sysroot" -E "LD_LIBRARY_PATH=$library_path${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}" "$@"
