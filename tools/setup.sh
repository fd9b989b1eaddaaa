# Shared set-up of ./run, ./test and .ci/run: which packages each needs, and their installation.
# Sourced by bash scripts, never started by itself.

# What building and starting the program needs. The two faces are Latin and Japanese; alsa-utils plays the gun.
RUN_PACKAGES=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools fonts-liberation fonts-vlgothic alsa-utils
    libpugixml-dev nlohmann-json3-dev zlib1g-dev libminizip-dev)
# What running it in a virtual display needs on top, with the picture that is taken there.
VIRTUAL_DISPLAY_PACKAGES=(xvfb xdotool imagemagick)
# What the tests need on top.
TEST_PACKAGES=(ccache libgtest-dev libgmock-dev libbenchmark-dev x11-utils clang-format python3
    "${VIRTUAL_DISPLAY_PACKAGES[@]}")
# What CI needs on top.
CI_PACKAGES=(clang-tidy-22)
# What looking for hostile files needs on top.
FUZZ_PACKAGES=(clang-19 libclang-rt-19-dev)
# What compiling for Windows, and running that, needs on top.
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix wine64 dpkg-dev)
# What compiling for a browser, and running that, needs on top.
BROWSER_PACKAGES=(clang-22 lld-22 libc++-22-dev-wasm32 libc++abi-22-dev-wasm32 libclang-rt-22-dev-wasm32 wasi-libc
    nodejs python3 dpkg-dev)
# What making the program of a page needs on top, and leading a page in a browser.
PAGE_PACKAGES=(clang-22 lld-22 libc++-22-dev-wasm32 libc++abi-22-dev-wasm32 libclang-rt-22-dev-wasm32 wasi-libc
    binaryen zopfli ninja-build python3)
PAGE_TEST_PACKAGES=(chromium chromium-driver python3-selenium node-typescript imagemagick)

# missing_packages PACKAGE... : prints those that are not installed, one a line.
missing_packages() {
    local installed package
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        grep -qxF "$package installed" <<<"$installed" || printf '%s\n' "$package"
    done
}

# need_packages PACKAGE... : installs what is missing with apt; asks for nothing where all is there.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "keelview: this is no Debian-like system, so nothing is installed by itself." >&2
        echo "keelview: if a step fails, install what your system calls: $*" >&2
        return 0
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ "${#missing[@]}" -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "keelview: these packages are missing, and installing them takes root or sudo:" >&2
            echo "    apt-get install --no-install-recommends ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "keelview: installing ${missing[*]}" >&2
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)
    "${apt[@]}" update </dev/null >&2
    "${apt[@]}" install --no-install-recommends "${missing[@]}" </dev/null >&2
}

# step TEXT... : one line that says what happens now.
step() { printf '\n== %s ==\n' "$*"; }
