# Debian packages by purpose, and their installation; sourced by the scripts that need them.
# shellcheck shell=bash disable=SC2034  # the lists are used by the sourcing scripts

# Qt's platform plugins (offscreen, xcb) and Qt Test come with qt6-base-dev, a font with fontconfig, which
# Qt's graphics need; so none of them is named here, even where recommended packages are left out.
BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev qt6-serialport-dev)
TEST_PACKAGES=(python3)
VIRTUAL_DISPLAY_PACKAGES=(xvfb)
WAYLAND_PACKAGES=(qt6-wayland)
ICON_PACKAGES=(librsvg2-bin icoutils)
LINT_PACKAGES=(git clang-format clang-tidy)
FUZZ_PACKAGES=(clang libclang-rt-14-dev)
COVERAGE_PACKAGES=(gcovr python3)
SHEET_PACKAGES=(imagemagick)
DESKTOP_PACKAGES=(appstream desktop-file-utils man-db)
DEBIAN_PACKAGES=(dpkg-dev lintian)
CHROOT_PACKAGES=(mmdebstrap)
MANUAL_PACKAGES=(asciidoctor ruby-asciidoctor-pdf python3)
PICTURE_PACKAGES=(optipng fonts-dejavu-core)

is_installed() {
    dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# run_apt ARGUMENT...: apt-get as root, without questions.
run_apt() {
    local as_root=()
    [[ $EUID -eq 0 ]] || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@"
}

# need_packages PACKAGE...: installs those that are missing; nothing happens when none is.
need_packages() {
    [[ -n $(type -P apt-get) && -n $(type -P dpkg-query) ]] ||
        fail "this is no Debian system; install a C++20 compiler, CMake, Ninja and Qt 6 (Widgets," \
             "SerialPort, Test) yourself, then build with: cmake -S . -B build -G Ninja && cmake --build build"
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    heading "Installing missing packages (this takes a while): ${missing[*]}"
    if [[ $EUID -ne 0 ]]; then
        local by_hand="as root run: apt-get update && apt-get install ${missing[*]}"
        [[ -n $(type -P sudo) ]] || fail "sudo is missing; $by_hand"
        sudo -v || fail "sudo gave no root rights; $by_hand"
    fi
    local log reason lists_are_fresh=true
    log=$(mktemp)
    run_apt -o APT::Update::Error-Mode=any update >"$log" 2>&1 || lists_are_fresh=false
    # Old lists may still do, so this is tried in any case.
    if run_apt install --no-install-recommends "${missing[@]}" >"$log" 2>&1; then
        rm "$log"
        return
    fi
    reason=$(grep -m 1 '^E:' "$log" || tail -n 1 "$log")
    rm "$log"
    $lists_are_fresh || fail "no packages could be fetched; is this machine on the network? ($reason)"
    fail "apt-get could not install ${missing[*]}: $reason"
}
