#!/usr/bin/env bash
# Runs an arm64 Linux program on this machine under qemu's user-mode emulator, with the arm64
# loader and libraries of the multiarch packages (libc6:arm64, libstdc++6:arm64, ...). CTest runs
# the arm64 tests through it.
#   scripts/qemu-arm64.sh PROGRAM [ARGS...]
# No path prefix (qemu -L) by default: with one, qemu shows the program that prefix's folder in
# place of every path that also exists there, "/" included. VF_QEMU_ARM64_ROOT sets one for a
# machine whose arm64 libraries live only in a separate root (e.g. /usr/aarch64-linux-gnu).
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
if [ -n "${VF_QEMU_ARM64_ROOT:-}" ]; then
    exec "$qemu" -L "$VF_QEMU_ARM64_ROOT" "$@"
fi
if [ ! -e /lib/ld-linux-aarch64.so.1 ]; then
    echo "qemu-arm64.sh: no arm64 loader in /lib (apt-get install libc6:arm64 libstdc++6:arm64)" >&2
    exit 127
fi
exec "$qemu" "$@"
