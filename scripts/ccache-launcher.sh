# Sourced by the build scripts with `root` set: fills `launcher` with the CMake options that put
# the compiler cache in front of the compilers, when the machine has one, so rebuilds and other
# checkouts of the tree reuse its objects. Empty otherwise.
launcher=()
if command -v ccache >/dev/null 2>&1; then
    export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$(dirname "$root")}"
    launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
