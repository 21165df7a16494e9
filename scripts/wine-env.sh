# Source this file, then: vf_wine_start BUILD_DIR ... vf_wine_stop
# It gives the build's Wine prefix a persistent wineserver (so each test starts in milliseconds)
# and an X display (Xvfb) when none is set, and stops both afterwards by their own pids.

vf_wine_start() {
    build_dir=$(cd "$1" && pwd)
    # VF_WINEPREFIX: another prefix for the same build (the unprivileged test user's own).
    export WINEPREFIX="${VF_WINEPREFIX:-$build_dir/wineprefix}"
    export WINEDEBUG="${WINEDEBUG:--all}"
    export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
    VF_XVFB_PID=""
    VF_WINESERVER_PID=""
    if [ -z "${DISPLAY:-}" ]; then
        n=90
        while [ -e "/tmp/.X$n-lock" ] || [ -e "/tmp/.X11-unix/X$n" ]; do n=$((n + 1)); done
        Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 </dev/null &
        VF_XVFB_PID=$!
        export DISPLAY=":$n"
        i=0
        while [ ! -e "/tmp/.X11-unix/X$n" ] && [ $i -lt 50 ]; do sleep 0.1; i=$((i + 1)); done
    fi
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        echo "Creating the Wine prefix $WINEPREFIX (first run only)..."
        wineboot -i >/dev/null 2>&1 </dev/null || true
    fi
    # A server left from the prefix setup would make ours exit at once; wait for it to go.
    wineserver -w >/dev/null 2>&1 || true
    wineserver -f -p >/dev/null 2>&1 </dev/null &
    VF_WINESERVER_PID=$!
    # Start Wine's own services now, detached from our stdio: started later by a test they would
    # inherit its output pipe and keep CTest waiting for end-of-file as long as the server lives.
    wineboot >/dev/null 2>&1 </dev/null || true
    export VF_XVFB_PID VF_WINESERVER_PID
}

vf_wine_stop() {
    if [ -n "${VF_WINESERVER_PID:-}" ]; then
        # Ends the prefix's Wine services with the server; killing only the server leaves them.
        wineserver -k >/dev/null 2>&1 || true
        kill "$VF_WINESERVER_PID" 2>/dev/null || true
        wait "$VF_WINESERVER_PID" 2>/dev/null || true
        VF_WINESERVER_PID=""
    fi
    if [ -n "${VF_XVFB_PID:-}" ]; then
        kill "$VF_XVFB_PID" 2>/dev/null || true
        wait "$VF_XVFB_PID" 2>/dev/null || true
        VF_XVFB_PID=""
    fi
}
