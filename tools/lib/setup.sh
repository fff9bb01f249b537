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

# zt_build PRESET [TARGET ...]: configures the preset once, then builds what changed. The compilers'
# output is shown only when the build fails.
zt_build() {
    local preset=$1 log
    shift
    log="$zt_root/build/$preset.log"
    mkdir -p "$zt_root/build"
    if command -v ccache >/dev/null; then
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    echo "Building $preset"
    (
        cd "$zt_root"
        [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
        cmake --build "build/$preset" ${1:+--target "$@"}
    ) >"$log" 2>&1 || {
        cat "$log"
        echo "The build of $preset failed." >&2
        return 1
    }
}
