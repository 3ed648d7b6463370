# SPDX-License-Identifier: Zlib
# Sourced by ./dev: the Windows cross build (MinGW-w64) and its run under Wine on Xvfb.

# Packages of the Windows cross build (./dev windows): the compiler, Wine to run the tests, and the
# sources or headers of what the library, the input lab and the tests use; for the windows under
# Wine an X server, a window manager, the Vulkan driver that Wine's Vulkan passes on to, and what
# the end-to-end test drives the lab with. libclang-rt-14-dev ships FuzzedDataProvider.h, one
# portable header that the fuzz harnesses' replay (label fuzz-replay) compiles with MinGW too.
windows_packages=(
    cmake ninja-build g++-mingw-w64-x86-64-posix wine64 wine
    libboost-dev libspdlog-dev libfmt-dev libtomlplusplus-dev googletest libclang-rt-14-dev
    libz-mingw-w64-dev libvulkan-dev libstb-dev g++ libx11-dev
    xvfb xauth x11-utils x11-xserver-utils twm xdotool python3 libvulkan1 mesa-vulkan-drivers
)

# What it builds once for MinGW (SDL2, Google Benchmark, libpng, Boost.program_options and Dear
# ImGui from Debian's source packages, GoogleTest from /usr/src/googletest, a Vulkan import
# library) and the Wine prefix live in build/windows-deps; the project builds in build/windows.
windows_deps=build/windows-deps
windows_build=build/windows
mingw_triple=x86_64-w64-mingw32
mingw_cxx=$mingw_triple-g++-posix
wine=/usr/lib/wine/wine64
wine_prefix="$PWD/$windows_deps/wine"

# Runs a Windows program under Wine, quietly, in the build's own prefix, in an address space laid
# out without randomisation (setarch -R, inherited by every process the command starts). Wine maps
# its shared user data at a fixed address when a process starts; with randomisation about one
# start in 4000 found that address taken, and the program ended before its first line: a test
# failed in 0.01 s with no output. Wine's error channel for memory stays on, so that such a start
# says "err:virtual:virtual_alloc_first_teb wine: failed to map the shared user data: c0000018".
wine_env() {
    WINEPREFIX="$wine_prefix" WINEDEBUG=-all,err+module,err+virtual \
        WINEDLLOVERRIDES="mscoree,mshtml=" setarch "$(uname -m)" -R "$@"
}

# cross_cmake <name> <source> <build> <cmake options...>: configures, builds and installs into the
# prefix. The build shows its progress; configuring and installing write a line each and keep
# their output in the build folder, shown when they fail.
cross_cmake() {
    local name=$1 source=$2 dir=$3
    shift 3
    mkdir -p "$dir"
    echo "dev: $name: configuring (log: $dir/configure.log)" >&2
    cmake -S "$source" -B "$dir" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$PWD/$windows_deps/prefix" "$@" \
        >"$dir/configure.log" 2>&1 || { tail -n 30 "$dir/configure.log" >&2; return 1; }
    echo "dev: $name: building" >&2
    cmake --build "$dir" -j "$jobs"
    echo "dev: $name: installing into $windows_deps/prefix" >&2
    cmake --install "$dir" >"$dir/install.log" 2>&1 || { tail -n 30 "$dir/install.log" >&2; return 1; }
}

# Adds a deb-src entry for Debian's own archive, for a machine that has none.
enable_debian_sources() {
    local sudo codename
    sudo=$(root_prefix "no deb-src entry to fetch Debian's source packages")
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    echo "dev: enabling Debian source packages (/etc/apt/sources.list.d/dev-sources.sources)" >&2
    printf '%s\n' "Types: deb-src" "URIs: http://deb.debian.org/debian" \
        "Suites: $codename $codename-updates" "Components: main" \
        "Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg" |
        $sudo tee /etc/apt/sources.list.d/dev-sources.sources >/dev/null
    $sudo apt-get update >/dev/null
}

# debian_source <package> [members...]: prints the folder of the source package's unpacked
# upstream archive, fetching and unpacking it into build/windows-deps/src/<package> first when it
# is not there; only the archive's [members...] (tar wildcards) when some are named.
debian_source() {
    local package=$1
    shift
    local into=$windows_deps/src/$package
    if [ ! -e "$into/.unpacked" ]; then
        mkdir -p "$into"
        if ! compgen -G "$into/${package}_*.orig.tar.*" >/dev/null; then
            echo "dev: $package: fetching Debian's source package into $into" >&2
            if ! (cd "$into" && apt-get source --download-only "$package" >/dev/null 2>&1); then
                enable_debian_sources
                (cd "$into" && apt-get source --download-only "$package" >/dev/null)
            fi
        fi
        echo "dev: $package: unpacking" >&2
        local archive
        archive=$(compgen -G "$into/${package}_*.orig.tar.*" | head -n 1)
        tar -xf "$archive" -C "$into" --wildcards "$@"
        touch "$into/.unpacked"
    fi
    find "$into" -mindepth 1 -maxdepth 1 -type d | head -n 1
}

# cross_archive <name> <library> <object folder> <compiler options...> -- <sources...>: compiles
# the sources with the cross compiler, a line per source, into the static library <library>.
cross_archive() {
    local name=$1 library=$2 out=$3
    shift 3
    local options=()
    while [ "$1" != "--" ]; do
        options+=("$1")
        shift
    done
    shift
    mkdir -p "$out"
    echo "dev: $name: compiling $# sources" >&2
    # Each: bash -c <script> <name> <source> <object folder> <options...>
    printf '%s\n' "$@" | xargs -P "$jobs" -I{} "$BASH" -c 'echo "dev: $0: $(basename "$1")" >&2 &&
        '"$mingw_cxx"' "${@:3}" -c "$1" -o "$2/$(basename "$1" .cpp).o"' "$name" {} "$out" "${options[@]}"
    rm -f "$library"
    $mingw_triple-ar rcs "$library" "$out"/*.o
}

# Boost.program_options for MinGW: its few sources compiled against the system's Boost headers
# (the same version), into a static library; b2 is not needed for that.
build_program_options() {
    local source prefix=$windows_deps/prefix
    source=$(debian_source boost1.74 '*/libs/program_options/src/*')/libs/program_options/src
    cross_archive Boost.program_options "$prefix/lib/libboost_program_options.a" \
        "$windows_deps/program_options-build" -std=c++17 -O2 -DNDEBUG -DBOOST_ALL_NO_LIB \
        -DBOOST_BIND_GLOBAL_PLACEHOLDERS -isystem "$prefix/include" -- "$source"/*.cpp
}

# Dear ImGui's core for MinGW, built as Debian builds it: stb's font and rectangle packers from
# the system's stb headers (libstb-dev), the Linux build's version; here their implementation
# goes into the same library. Its headers go to prefix/include/imgui and its backends' sources
# to prefix/share/imgui/backends, for a program to compile the backend it uses.
build_imgui() {
    local source prefix=$windows_deps/prefix out=$windows_deps/imgui-build
    source=$(debian_source imgui)
    mkdir -p "$out" "$prefix/include/imgui" "$prefix/share/imgui"
    printf '%s\n' '#define STB_RECT_PACK_IMPLEMENTATION' '#include <stb/stb_rect_pack.h>' \
        '#define STB_TRUETYPE_IMPLEMENTATION' '#include <stb/stb_truetype.h>' >"$out/stb.cpp"
    cross_archive imgui "$prefix/lib/libimgui.a" "$out/objects" -std=c++17 -O2 -DNDEBUG \
        -I"$source" -isystem "$prefix/include" -DIMGUI_DISABLE_STB_RECT_PACK_IMPLEMENTATION \
        '-DIMGUI_STB_RECT_PACK_FILENAME=<stb/stb_rect_pack.h>' \
        -DIMGUI_DISABLE_STB_TRUETYPE_IMPLEMENTATION \
        '-DIMGUI_STB_TRUETYPE_FILENAME=<stb/stb_truetype.h>' \
        -- "$source"/imgui*.cpp "$out/stb.cpp"
    cp "$source"/*.h "$prefix/include/imgui/"
    rm -rf "$prefix/share/imgui/backends"
    cp -r "$source/backends" "$prefix/share/imgui/backends"
}

# An import library for vulkan-1.dll, which Wine provides at run time: every entry point the
# system's Vulkan headers declare (the core and the Win32 surface), listed in a module definition
# for dlltool. Names the DLL lacks do no harm unless a program calls them.
vulkan_import_library() {
    local prefix=$windows_deps/prefix
    echo "dev: Vulkan: making the import library of vulkan-1.dll" >&2
    {
        echo "LIBRARY vulkan-1.dll"
        echo "EXPORTS"
        grep -ho 'VKAPI_CALL vk[A-Za-z0-9]*' /usr/include/vulkan/vulkan_core.h \
            /usr/include/vulkan/vulkan_win32.h | cut -d' ' -f2 | sort -u
    } >"$windows_deps/vulkan-1.def"
    $mingw_triple-dlltool -d "$windows_deps/vulkan-1.def" -D vulkan-1.dll \
        -l "$prefix/lib/libvulkan-1.dll.a"
}

windows_dependencies() {
    local prefix=$windows_deps/prefix
    mkdir -p "$prefix/include" "$prefix/lib"
    # Header-only libraries and headers of the Linux system, seen through links: putting
    # /usr/include itself on MinGW's search path would mix Linux's C headers into the build.
    local header
    for header in boost spdlog fmt toml++ vulkan vk_video stb; do
        ln -sfn "/usr/include/$header" "$prefix/include/$header"
    done
    if [ ! -e "$prefix/.sdl2" ]; then
        echo "dev: cross-building SDL2 for Windows (once)" >&2
        cross_cmake SDL2 "$(debian_source libsdl2)" "$windows_deps/sdl2-build" \
            -DSDL_STATIC=OFF -DSDL_SHARED=ON -DSDL_TEST=OFF
        touch "$prefix/.sdl2"
    fi
    if [ ! -e "$prefix/.googletest" ]; then
        echo "dev: cross-building GoogleTest for Windows (once)" >&2
        cross_cmake GoogleTest /usr/src/googletest "$windows_deps/googletest-build"
        touch "$prefix/.googletest"
    fi
    if [ ! -e "$prefix/.benchmark" ]; then
        echo "dev: cross-building Google Benchmark for Windows (once)" >&2
        cross_cmake "Google Benchmark" "$(debian_source benchmark)" "$windows_deps/benchmark-build" \
            -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_GTEST_TESTS=OFF \
            -DBENCHMARK_ENABLE_WERROR=OFF
        touch "$prefix/.benchmark"
    fi
    if [ ! -e "$prefix/.libpng" ]; then
        echo "dev: cross-building libpng for Windows (once)" >&2
        cross_cmake libpng "$(debian_source libpng1.6)" "$windows_deps/libpng-build" \
            -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
        touch "$prefix/.libpng"
    fi
    if [ ! -e "$prefix/.program_options" ]; then
        echo "dev: cross-building Boost.program_options for Windows (once)" >&2
        build_program_options
        touch "$prefix/.program_options"
    fi
    if [ ! -e "$prefix/.imgui" ]; then
        echo "dev: cross-building Dear ImGui for Windows (once)" >&2
        build_imgui
        touch "$prefix/.imgui"
    fi
    [ -e "$prefix/lib/libvulkan-1.dll.a" ] || vulkan_import_library
    if [ ! -e "$windows_deps/wine/system.reg" ]; then
        echo "dev: creating the Wine prefix (once)" >&2
        wine_env "$wine" wineboot --init >/dev/null 2>&1 || true
        wine_env /usr/lib/wine/wineserver -w
    fi
}

# windows_build_all [target]: builds the dependencies once, then the project in build/windows (or
# only <target> and what it needs), with the DLLs its programs need beside them.
windows_build_all() {
    deps "${windows_packages[@]}"
    windows_dependencies
    # The end-to-end test asks the lab's window to close through X, with a program of this machine.
    local x_close=$PWD/$windows_build/host/x_close
    if [ ! -e "$x_close" ] || [ tests/e2e/XClose.cpp -nt "$x_close" ]; then
        mkdir -p "$(dirname "$x_close")"
        g++ -std=c++17 -O2 -Wall -Wextra -Wpedantic -Werror tests/e2e/XClose.cpp -lX11 -o "$x_close"
    fi
    # The preset "windows" names the toolchain, the dependencies' prefix, Wine and x_close.
    preset_build windows ${1:+--target "$1"}
    # Windows finds DLLs beside the program: SDL2, zlib and the MinGW runtime go to its bin/.
    local dll
    for dll in "$windows_deps/prefix/bin/SDL2.dll" \
        "/usr/$mingw_triple/lib/zlib1.dll" \
        "$($mingw_cxx -print-file-name=libstdc++-6.dll)" \
        "$($mingw_cxx -print-file-name=libgcc_s_seh-1.dll)" \
        "$($mingw_cxx -print-file-name=libwinpthread-1.dll)"; do
        cp -u "$dll" "$windows_build/bin/"
    done
}

# Tests that check what does not hold on Windows or under Wine; named here, not hidden.
windows_skipped_tests=(
    # Wine implements no symbolic links (Windows allows them only with a privilege), and Windows
    # files have no POSIX mode to keep.
    ConfigFileTest.WriteKeepsTheModeAndTheLinkAndAnEmptyPathIsRefused
    # Windows has no limit on a process's threads that the process can set itself.
    RemovalWithoutThreads.TheDyingReactorIsRemovedOnItsOwnThread
)

# Prints the ctest expression (-E) of the skipped tests, and names them on stderr.
windows_skipped() {
    echo "dev: not run under Wine: ${windows_skipped_tests[*]}" >&2
    (IFS='|' && echo "^(${windows_skipped_tests[*]})\$")
}

windows() {
    windows_build_all
    on_wine_display ctest "${ctest_options[@]}" -E "$(windows_skipped)"
    windows_consumer
}

# windows_consumer: the Windows build installed into a prefix laid out like /usr and used by a
# MinGW project as a Windows engine would (tests/consumer): found through CMAKE_PREFIX_PATH, the
# library alone with the host kit's packages unfindable, then with the components host and
# vulkan; each program run under Wine.
windows_consumer() {
    local work=$PWD/build/windows-consumer
    local prefix=$work/root/usr
    rm -rf "$work"
    mkdir -p "$work"
    cmake --install "$windows_build" --prefix "$prefix" >/dev/null
    consumer_checks_install "$prefix"
    local common=(-G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake"
        -DWINDOW_MINGW_PREFIX="$PWD/$windows_deps/prefix" -DCMAKE_PREFIX_PATH="$prefix"
        -DCMAKE_BUILD_TYPE=Release --no-warn-unused-cli)
    echo "dev: windows consumer: find_package(window CONFIG) alone, without the host kit's packages"
    cmake -S tests/consumer -B "$work/core" "${common[@]}" -DCMAKE_DISABLE_FIND_PACKAGE_spdlog=ON \
        -DCMAKE_DISABLE_FIND_PACKAGE_tomlplusplus=ON -DCMAKE_DISABLE_FIND_PACKAGE_SDL2=ON \
        -DCMAKE_DISABLE_FIND_PACKAGE_Vulkan=ON >/dev/null
    cmake --build "$work/core" >/dev/null
    echo "dev: windows consumer: find_package(window CONFIG COMPONENTS host vulkan)"
    cmake -S tests/consumer -B "$work/package" "${common[@]}" \
        "-DWINDOW_CONSUMER_COMPONENTS=host;vulkan" >/dev/null
    cmake --build "$work/package" >/dev/null
    # Windows finds DLLs beside the program: the installed library's, SDL's and the runtime's.
    local dll folder
    for folder in "$work/core" "$work/package"; do
        for dll in "$prefix"/bin/*.dll "$windows_build"/bin/SDL2.dll \
            "$windows_build"/bin/lib{stdc++-6,gcc_s_seh-1,winpthread-1}.dll; do
            cp "$dll" "$folder/"
        done
    done
    windows_build=$work on_wine_display bash -c "SDL_VIDEODRIVER=dummy $wine core/core_consumer.exe &&
        SDL_VIDEODRIVER=windows $wine package/consumer.exe package.toml &&
        cd package && SDL_VIDEODRIVER=windows $wine first_frame.exe 3"
}

# windows_demo [inputlab options]: the Windows build of the input lab under Wine. Nobody can
# watch it: without options it plays the tour script and keeps its last frame in
# build/inputlab-windows.png, the picture of the README's (which the end-to-end test compares
# pixel for pixel, with the window focused).
windows_demo() {
    windows_build_all inputlab
    if [ $# -eq 0 ]; then
        set -- --script "$PWD/examples/inputlab/scripts/tour.txt" --frames 300 \
            --screenshot "$PWD/build/inputlab-windows.png"
        echo "dev: running the Windows lab headless under Wine with the tour script; the last" \
            "frame goes to build/inputlab-windows.png"
    fi
    on_wine_display env SDL_VIDEODRIVER=windows "$wine" bin/inputlab.exe "$@"
}

# on_wine_display <command...>: runs the command in build/windows on an X server of its own
# (a window manager must not manage the windows of a display that is in use), with a window
# manager and one Wine server for the whole run.
on_wine_display() {
    xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp -noreset" \
        bash -c "$(declare -f windows_session wine_env); $(declare -p wine wine_prefix); \
            windows_session \"\$@\"" windows_session "$windows_build" "$@"
}

# windows_session <build> <command...>: on the X server of xvfb-run, runs the command in <build>
# under a window manager and one Wine server for the whole run.
windows_session() {
    local dir=$1
    shift
    # Without a window manager Wine takes about 2 s to destroy each window; twm brings that to
    # milliseconds. It puts a window where its program asked, with no border or title, so that
    # the client area is exactly where the program put it; only a window that names no place is
    # placed by twm itself, without asking the user. Its fonts are "fixed", the only one there is
    # without xfonts-base; without them it exits at once.
    printf '%s\n' 'UsePPosition "on"' RandomPlacement NoTitle 'BorderWidth 0' \
        'TitleFont "fixed"' 'ResizeFont "fixed"' 'MenuFont "fixed"' 'IconFont "fixed"' \
        'IconManagerFont "fixed"' >"$dir/twmrc"
    twm -f "$dir/twmrc" >"$dir/twm.log" 2>&1 &
    local twm_pid=$!
    # twm marks the root window once it manages the screen.
    for _ in $(seq 100); do
        xprop -root _MIT_PRIORITY_COLORS 2>/dev/null | grep -q = && break
        kill -0 "$twm_pid" 2>/dev/null || { echo "dev: twm did not start; see $dir/twm.log" >&2; return 1; }
        sleep 0.1
    done
    # One persistent Wine server: otherwise every test process boots Wine's services again.
    wine_env /usr/lib/wine/wineserver -p
    wine_env "$wine" wineboot >/dev/null 2>&1 || true
    # Wine's desktop process is started by the first program that needs it, with that program's
    # standard error: were it a test, ctest would wait on the test's output for as long as later
    # tests kept the desktop alive. The keeper starts it here, with the session's output, and
    # holds it to the end (tests/wine/DesktopKeeper.cpp).
    local status=0
    if [ -e "$dir/bin/desktop_keeper.exe" ]; then
        coproc keeper { wine_env "$wine" "$dir/bin/desktop_keeper.exe" 2>"$dir/desktop_keeper.log"; }
        local ready=
        read -r -t 60 ready <&"${keeper[0]}" || true
        if [ "${ready%$'\r'}" != ready ]; then # a Windows program ends its lines with CR LF
            echo "dev: Wine's desktop did not start; see $dir/desktop_keeper.log" >&2
            status=1
        fi
    fi
    if [ "$status" -eq 0 ]; then
        (cd "$dir" && wine_env "$@") || status=$?
    fi
    wine_env /usr/lib/wine/wineserver -k 2>/dev/null || true
    kill "$twm_pid" 2>/dev/null || true
    wait "$twm_pid" 2>/dev/null || true
    return "$status"
}
