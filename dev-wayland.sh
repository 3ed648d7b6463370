# SPDX-License-Identifier: Zlib
# Sourced by ./dev: the display and end-to-end tests on SDL's wayland driver, with Weston as the
# compositor. Weston runs as a client of Xvfb (its x11 backend), which gives it a seat: its
# headless backend has none, and SDL cannot start without one. Input reaches the Wayland clients
# through Weston's X window, so xdotool drives them as it drives X clients.

# What the Wayland runs need beyond the Linux build: the compositor, the decorations SDL draws
# on Wayland, and the keyboard layout tool the end-to-end test sets Weston's keymap with.
wayland_packages=(weston libdecor-0-plugin-1-cairo x11-xkb-utils)

# on_wayland_display <command...>: runs the command on a Weston compositor of its own (inside a
# fresh Xvfb), with SDL's Wayland environment set.
on_wayland_display() {
    xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp -noreset" \
        bash -c "$(declare -f wayland_session); wayland_session \"\$@\"" wayland_session "$@"
}

# wayland_session <command...>: on the X server of xvfb-run, starts Weston with the desktop shell
# over the whole screen, waits until it serves, runs the command and stops Weston. Its runtime
# folder (where the socket lives) is private, as Wayland requires.
wayland_session() {
    local runtime status=0
    runtime=$(mktemp -d "${TMPDIR:-/tmp}/window-wayland.XXXXXX")
    XDG_RUNTIME_DIR=$runtime weston --backend=x11-backend.so --socket=wayland-test \
        --width=1920 --height=1080 --idle-time=0 >"$runtime.log" 2>&1 &
    local weston=$!
    # Ready once its socket is there and its output window is shown on the X server.
    local ready=
    for _ in $(seq 300); do
        if [ -S "$runtime/wayland-test" ]; then
            local output
            output=$(xdotool search --class "Weston Compositor" 2>/dev/null | head -n 1) || true
            if [ -n "$output" ] && xwininfo -id "$output" | grep -q IsViewable; then
                ready=yes
                break
            fi
        fi
        kill -0 "$weston" 2>/dev/null || break
        sleep 0.1
    done
    if [ -z "$ready" ]; then
        echo "dev: Weston did not start:" >&2
        cat "$runtime.log" >&2
        status=1
    else
        XDG_RUNTIME_DIR=$runtime WAYLAND_DISPLAY=wayland-test SDL_VIDEODRIVER=wayland "$@" ||
            status=$?
    fi
    kill "$weston" 2>/dev/null || true
    wait "$weston" 2>/dev/null || true
    rm -rf "$runtime" "$runtime.log"
    return "$status"
}

# Tests that check what does not hold on Wayland; named here, not hidden.
wayland_skipped_tests=(
    # xdg-shell tells a client nothing when its window is minimised (there is no such state), so
    # SDL never reports a Wayland window minimised and its size never drops to 0 x 0.
    Wayland.WindowTest.MinimisedWindowHasNoSizeAndSavesZero
    # A compositor tells no client the size of another client's surface: only SDL, the window's
    # own client, knows it (the surface test checks the handle through Vulkan instead).
    Wayland.WindowTest.WindowSystemFindsTheHandlesWindowAtItsSize
)

# Prints the ctest expression (-E) of the skipped tests, and names them on stderr.
wayland_skipped() {
    echo "dev: not run on Wayland: ${wayland_skipped_tests[*]}" >&2
    (IFS='|' && echo "^(${wayland_skipped_tests[*]})\$")
}

# wayland_tests <build>: the build's Wayland tests (label wayland) on a compositor of their own.
wayland_tests() {
    (cd "$1" && on_wayland_display ctest "${ctest_options[@]}" -L '^wayland$' -E "$(wayland_skipped)")
}
