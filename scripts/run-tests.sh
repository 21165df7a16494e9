#!/usr/bin/env bash
# Builds everything and runs every test: the native sanitizer build, the Linux host's release
# build, then the Windows build under Wine with one persistent wineserver for the whole run.
#
# Run as root (a fresh machine, CI), the native end-to-end suites (scripts/native-e2e.sh) and the
# Wine suites run as the unprivileged user vftest (scripts/test-user.sh), Wine in a prefix of its
# own: read-only files and folders and access-denied are then as real as on a server or on
# Windows, where root would write anyway. A small tmpfs is mounted for the full-volume tests and
# handed to them in VF_TEST_SMALL_VOLUME.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"
windows_build="$build/windows"

"$root/scripts/install-prereqs.sh"
"$root/scripts/build.sh" --native

status=0
echo "== native tests (ASan/UBSan)"
ctest --test-dir "$build/native" --output-on-failure -j"$(nproc)" -LE native-e2e || status=1
echo "== native end-to-end tests (ASan/UBSan, unprivileged)"
"$root/scripts/native-e2e.sh" "$build/native" || status=1
echo "== Linux host, release build"
"$root/tests/host_e2e/native_cli_test.sh" "$build/linux/bin/fmhost" \
    "$build/linux/bin/HostFixture.fmx" || status=1

# arm64 under qemu: every test the arm64 tree has, on two cores. The whole suite fits, so no
# choice to keep up: each codec (the picture codecs from the arm64 archives included), path, text
# and host test, the end-to-end suites through the arm64 fmhost and plug-in, the plug-in's binary
# check with arm64 binutils, and its load into a bare process. A test that starts a program of
# ours puts VF_TEST_EMULATOR, which CTest sets to qemu there, before it; a failed program start
# looks made under qemu, and the cases that need one to fail show that and skip.
echo "== arm64 tests (qemu)"
if "$root/scripts/build.sh" --arm64; then
    ctest --test-dir "$build/linux-arm64" --output-on-failure -j"$(nproc)" || status=1
else
    status=1
fi

small_volume="$windows_build/small-volume"
cleanup() {
    if mountpoint -q "$small_volume" 2>/dev/null; then
        umount "$small_volume" || true
    fi
}
trap cleanup EXIT

# A few MB: big enough for a test's originals, small enough to fill in milliseconds.
prepare_small_volume() {
    local owner=$1
    mkdir -p "$small_volume"
    cleanup
    if mount -t tmpfs -o "size=3m,mode=0755" tmpfs "$small_volume" 2>"$windows_build/small-volume.log"; then
        chown "$owner" "$small_volume"
        export VF_TEST_SMALL_VOLUME="$small_volume"
    else
        export VF_TEST_SMALL_VOLUME_REFUSED="mount -t tmpfs: $(tr '\n' ' ' <"$windows_build/small-volume.log")"
        echo "No small volume for the full-disk tests: $VF_TEST_SMALL_VOLUME_REFUSED"
    fi
}

# The commands the Wine suites run with, as whoever runs them.
wine_suites() {
    # shellcheck source=wine-env.sh
    source "$root/scripts/wine-env.sh"
    vf_wine_start "$windows_build"
    trap vf_wine_stop EXIT
    # shellcheck disable=SC2086 # VF_CTEST_ARGS: extra ctest words, such as "-R zip".
    ctest --test-dir "$windows_build" --output-on-failure -j"$(nproc)" ${VF_CTEST_ARGS:-}
}

echo "== Windows tests (Wine)"
if [ "$(id -u)" -ne 0 ]; then
    # Already unprivileged: the suites run as this user, in the build's own prefix.
    wine_suites || status=1
    exit $status
fi

# shellcheck source=test-user.sh
source "$root/scripts/test-user.sh"
user=$(vf_test_user)
# The user reads the whole tree (programs, fixtures, the wrapper) and walks down to it...
vf_open_trees "$root" "$build"
# ...and writes only its prefix and CTest's records.
prefix="$windows_build/wineprefix-$user"
mkdir -p "$prefix" "$windows_build/Testing"
chown "$user:" "$prefix"
chown -R "$user:" "$windows_build/Testing"
prepare_small_volume "$user"

export VF_WINEPREFIX="$prefix" root windows_build
export -f wine_suites
# No inherited display: the user's own Xvfb, which its Wine processes may connect to.
runuser -u "$user" -- env -u DISPLAY HOME="/var/lib/$user" bash -c wine_suites </dev/null ||
    status=1

exit $status
