# Sourced by the test scripts run as root: the unprivileged account the end-to-end suites run as,
# so that mode bits, read-only items and refused access are as real as on a server or on
# Windows, where root would write anyway.

# Creates the account once (VF_TEST_USER, default vftest) and prints its name.
vf_test_user() {
    local user="${VF_TEST_USER:-vftest}"
    if ! id -u "$user" >/dev/null 2>&1; then
        # Another checkout may create it at the same moment: its existence is what counts.
        useradd --system --create-home --home-dir "/var/lib/$user" --shell /bin/bash "$user" \
            >&2 || id -u "$user" >/dev/null
    fi
    echo "$user"
}

# Lets every account read the trees named (programs, fixtures, libraries) and walk down to them
# from "/", wherever the checkout lies.
vf_open_trees() {
    local tree dir
    chmod -R o+rX "$@"
    for tree in "$@"; do
        dir=$tree
        while [ "$dir" != "/" ]; do
            chmod o+x "$dir"
            dir=$(dirname "$dir")
        done
    done
}
