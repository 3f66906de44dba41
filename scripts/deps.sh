# Sourced by the other scripts: makes sure the Debian packages a step needs are installed.
# As root it installs what is missing; otherwise it prints the exact apt-get line and stops.

qc_require() {
    local missing=()
    local pkg
    for pkg in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$pkg")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" -eq 0 ]; then
        echo "Installing missing packages: ${missing[*]}"
        export DEBIAN_FRONTEND=noninteractive
        apt-get update -qq || return 1
        apt-get install -y -qq --no-install-recommends "${missing[@]}" || return 1
    else
        echo "Missing packages. Install them with:" >&2
        echo "  sudo apt-get install -y --no-install-recommends ${missing[*]}" >&2
        return 1
    fi
}

# What building the library, its tests, benchmarks and demo needs.
QC_NATIVE_PACKAGES=(cmake ninja-build g++ pkg-config googletest libgtest-dev libgmock-dev
    libbenchmark-dev zlib1g-dev libssl-dev libglm-dev)

# What the libFuzzer targets need (scripts/fuzz.sh).
QC_FUZZ_PACKAGES=(clang libclang-rt-14-dev)

# What the Windows cross build (preset "windows") and its test run under Wine need: the
# mingw-w64 compiler with the posix thread model, the GoogleTest sources built for Windows,
# and the 64-bit Wine loader.
QC_WINDOWS_PACKAGES=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest wine wine64)
