# Set-up shared by the commands in the root folder; sourced, not run. Everything here does nothing
# when its work is already done.
zt_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# Debian packages, by the file that shows that one is there.
zt_packages() {
    cat <<'LIST'
/usr/bin/x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
/usr/x86_64-w64-mingw32/include/zlib.h libz-mingw-w64-dev
/usr/bin/wine wine
/usr/lib/wine/wine64 wine64
/usr/bin/cmake cmake
/usr/bin/ninja ninja-build
/usr/bin/g++ g++
/usr/src/googletest/googletest/CMakeLists.txt googletest
/usr/bin/unzip unzip
/usr/bin/python3 python3
LIST
    case "${1:-}" in
    tests) zt_test_packages ;;
    fuzz) zt_fuzz_packages ;;
    coverage) echo "/usr/bin/gcovr gcovr" ;;
    esac
}

zt_test_packages() {
    cat <<'LIST'
/usr/lib/python3/dist-packages/pytest python3-pytest
/usr/lib/python3/dist-packages/xdist python3-pytest-xdist
/usr/lib/python3/dist-packages/pytest_timeout.py python3-pytest-timeout
/usr/bin/clang-format clang-format
/usr/bin/clang-tidy clang-tidy
/usr/bin/clang++ clang
/usr/bin/cppcheck cppcheck
/usr/bin/ccache ccache
/usr/bin/chromium chromium
/usr/lib/python3/dist-packages/PIL python3-pil
LIST
}

zt_as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

zt_fuzz_packages() {
    cat <<'LIST'
/usr/lib/llvm-14/bin/clang++ clang-14
/usr/bin/clang++ clang
/usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a libclang-rt-14-dev
LIST
}

# zt_install_packages [tests|fuzz|coverage]: installs what is missing, with apt-get.
zt_install_packages() {
    local file package missing=()
    while read -r file package; do
        [ -e "$file" ] || missing+=("$package")
    done < <(zt_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "Missing, and no apt-get here to install them: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing ${missing[*]}"
    zt_as_root apt-get update -qq
    zt_as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# zt_configure PRESET: configures the preset once. Works in the root folder.
zt_configure() {
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1"
}

# zt_build PRESET [TARGET ...]: configures the preset once, then builds what changed. Prints how far
# it is; the compilers' output is shown only when the build fails.
zt_build() {
    local preset=$1 log builder
    shift
    log="$zt_root/build/$preset.log"
    mkdir -p "$zt_root/build"
    zt_use_ccache
    echo "build $preset: starting"
    (
        cd "$zt_root"
        zt_configure "$preset" && exec ninja -C "build/$preset" "$@"
    ) >"$log" 2>&1 &
    builder=$!
    trap 'kill "$builder" 2>/dev/null; exit 130' INT TERM
    zt_show_progress "$preset" "$log" "$builder"
    trap - INT TERM
    wait "$builder" || {
        cat "$log"
        echo "The build of $preset failed." >&2
        return 1
    }
}

# Presets and work trees share what they compile alike, precompiled headers included.
zt_use_ccache() {
    command -v ccache >/dev/null || return 0
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_BASEDIR=$zt_root CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
}

# zt_show_progress PRESET LOG PID: while the process runs, prints ninja's last count: in one line of a
# terminal, and otherwise in a line every twenty seconds.
zt_show_progress() {
    local halves=0 count
    while kill -0 "$3" 2>/dev/null; do
        sleep 0.5
        halves=$((halves + 1))
        count=$(grep -o '^\[[0-9]*/[0-9]*\]' "$2" | tail -n 1 || true)
        if [ -t 1 ]; then
            printf '\r\033[Kbuild %s: %s' "$1" "${count:-configuring}"
        elif [ $((halves % 40)) = 0 ]; then
            echo "build $1: ${count:-configuring}"
        fi
    done
    [ ! -t 1 ] || printf '\r\033[K'
}
