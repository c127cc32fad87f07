# What ./run, ./test and .ci/run share: install what is missing, and build a preset. Sourced by them.

run_packages=(g++ cmake ninja-build python3 qt6-base-dev qt6-serialport-dev libarchive-dev libgl-dev fonts-dejavu-core
              qt6-translations-l10n)
test_packages=(libgtest-dev)
ci_packages=(clang clang-tidy clang-format libclang-rt-dev)

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
    [ "$1" = run ] || printf '%s\n' "${test_packages[@]}"
    [ "$1" != ci ] || printf '%s\n' "${ci_packages[@]}"
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
