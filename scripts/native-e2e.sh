#!/usr/bin/env bash
# Runs the native end-to-end suites (CTest label native-e2e) of the build folder given, by
# default build/native. As root they run as the unprivileged test account (scripts/test-user.sh)
# with a temporary folder and home of its own and a 3 MB tmpfs for the full-volume cases
# (VF_TEST_SMALL_VOLUME); run as anyone else, as that user. Extra arguments go to ctest.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
native="${1:-${VF_BUILD_DIR:-$root/build}/native}"
shift || true
native=$(cd "$native" && pwd)

if [ "$(id -u)" -ne 0 ]; then
    exec ctest --test-dir "$native" -L native-e2e --output-on-failure -j"$(nproc)" "$@"
fi

# shellcheck source=test-user.sh
source "$root/scripts/test-user.sh"
user=$(vf_test_user)
vf_open_trees "$root" "$native"

scratch="$native/e2e-$user"
small_volume="$native/small-volume"
cleanup() {
    if mountpoint -q "$small_volume" 2>/dev/null; then
        umount "$small_volume" || true
    fi
}
trap cleanup EXIT
cleanup
rm -rf "$scratch"
mkdir -p "$scratch/tmp" "$scratch/home" "$native/Testing" "$small_volume"
chown -R "$user:" "$scratch" "$native/Testing"
if mount -t tmpfs -o "size=3m,mode=0755" tmpfs "$small_volume" 2>"$scratch/mount.log"; then
    chown "$user" "$small_volume"
    export VF_TEST_SMALL_VOLUME="$small_volume"
else
    echo "No small volume for the full-disk tests: $(tr '\n' ' ' <"$scratch/mount.log")"
fi

status=0
runuser -u "$user" -- env HOME="$scratch/home" TMPDIR="$scratch/tmp" \
    ${VF_TEST_SMALL_VOLUME:+VF_TEST_SMALL_VOLUME="$VF_TEST_SMALL_VOLUME"} \
    ctest --test-dir "$native" -L native-e2e --output-on-failure -j"$(nproc)" "$@" \
    </dev/null || status=1
exit $status
