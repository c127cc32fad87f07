# What ./run, ./test, .ci/run and tools/deep_check.sh share: install what is missing, build a preset, run the fuzz targets.
# Sourced by them.

run_packages=(g++ cmake ninja-build python3 qt6-base-dev qt6-serialport-dev libarchive-dev libgl-dev fonts-dejavu-core
              qt6-translations-l10n)
test_packages=(libgtest-dev)
ci_packages=(clang clang-tidy clang-format libclang-rt-dev)
# What builds for Windows, and what runs it.
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest qt6-base-dev-tools xz-utils)
wine_packages=(wine64 wine xvfb xauth)
windows_sysroot_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev qt6-base-private-dev dpkg-dev make xz-utils
                          autoconf automake libtool)

# A stamp tells what has been found installed, so that a second start asks nothing.
prepare() {
    local purpose=$1 stamp=build/.prepared-$1
    [ -f "$stamp" ] && [ "$stamp" -nt tools/prepare.sh ] && return
    command -v dpkg-query >/dev/null || { mkdir -p build; return; }
    install_missing "$purpose"
    mkdir -p build
    touch "$stamp"
}

install_missing() {
    local wanted missing=()
    mapfile -t wanted < <(packages_for "$1")
    for package in "${wanted[@]}"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}" >&2
    as_root apt-get update -qq >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

packages_for() {
    printf '%s\n' "${run_packages[@]}"
    case $1 in
        test) printf '%s\n' "${test_packages[@]}" ;;
        ci) printf '%s\n' "${test_packages[@]}" "${ci_packages[@]}" ;;
        windows) printf '%s\n' "${windows_packages[@]}" ;;
        windows-tests) printf '%s\n' "${windows_packages[@]}" "${wine_packages[@]}" ;;
        windows-sysroot) printf '%s\n' "${windows_sysroot_packages[@]}" ;;
    esac
}

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Configures once; later builds configure again by themselves when needed.
build_preset() {
    local folder=build/$1
    if [ ! -f "$folder/build.ninja" ]; then
        cmake --preset "$1" >&2
    fi
    # Ninja's own word that there is nothing to do is left out.
    cmake --build --preset "$1" -- --quiet >&2
}

# Sanitizers fail at random where the kernel randomises addresses too widely for them.
run_sanitized() {
    if command -v setarch >/dev/null && setarch "$(uname -m)" -R true 2>/dev/null; then
        setarch "$(uname -m)" -R "$@"
    else
        "$@"
    fi
}

# Runs each fuzz target with these options of libFuzzer, as many at a time as there are processors.
run_fuzzers() {
    local target running=0
    for target in build/fuzz/fuzz/fuzz_*; do
        [ -f "$target" ] && [ -x "$target" ] || continue
        if [ "$running" -ge "$(nproc)" ]; then
            wait -n
            running=$((running - 1))
        fi
        run_fuzzer "${target##*/fuzz_}" "$@" &
        running=$((running + 1))
    done
    for (( ; running > 0; running--)); do wait -n; done
}

# Real files are longer, but 512 bytes hold each kind of line. Small memories of what was freed, and by whom, are a third
# of the time; a find is run again without them.
run_fuzzer() {
    mkdir -p "build/fuzz/corpus/$1"
    ASAN_OPTIONS=quarantine_size_mb=8:malloc_context_size=2 run_sanitized "build/fuzz/fuzz/fuzz_$1" -max_len=512 \
        -verbosity=0 -artifact_prefix="build/fuzz/$1-" "${@:2}" "build/fuzz/corpus/$1" "fuzz/seeds/$1"
}

# KARVO_WINDOWS_SYSROOT, an archive or a folder, becomes the folder.
use_windows_sysroot() {
    local folder=build/windows-sysroot
    if [ -f "${KARVO_WINDOWS_SYSROOT:?names the libraries for Windows, see packaging/windows/README.md}" ]; then
        if [ ! -f "$folder/.unpacked" ] || [ "$KARVO_WINDOWS_SYSROOT" -nt "$folder/.unpacked" ]; then
            rm -rf "$folder"
            mkdir -p "$folder"
            tar -C "$folder" --strip-components=1 -xf "$KARVO_WINDOWS_SYSROOT"
            touch "$folder/.unpacked"
        fi
        KARVO_WINDOWS_SYSROOT=$PWD/$folder
    fi
    export KARVO_WINDOWS_SYSROOT
}
