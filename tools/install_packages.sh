#!/bin/sh
# Installs the Debian packages that building, testing or checking needs, those only that are missing.
# usage: install_packages.sh build|test|check|bench|valgrind|fuzz|pictures|libreoffice|windows|windows-package|package ...
set -eu

packages_for() {
    case $1 in
    build) echo "g++ cmake ninja-build pkg-config ccache libpugixml-dev libzip-dev zlib1g-dev qt6-base-dev libgl-dev qt6-translations-l10n fonts-wqy-zenhei" ;;
    test) echo "libgtest-dev libgmock-dev python3 python3-docx python3-openpyxl xvfb xdotool openbox wmctrl x11-utils cups-daemon cups-client" ;;
    check) echo "clang-format clang-tidy clang-tools python3" ;;
    libreoffice) echo "libreoffice-calc libreoffice-writer libreoffice-dev" ;;
    windows) echo "g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine64 cmake ninja-build pkg-config ccache dpkg-dev nsis librsvg2-bin imagemagick" ;;
    windows-package) echo "qt6-base-dev qt6-translations-l10n xvfb xauth xdotool x11-utils fonts-wqy-zenhei" ;;
    package) echo "dpkg-dev file lintian" ;;
    valgrind) echo "valgrind" ;;
    fuzz) echo "clang-14 libclang-rt-14-dev" ;;
    bench) echo "gawk mawk python3 python3-docx python3-matplotlib python3-openpyxl libc-bin xvfb xdotool" ;;
    pictures) echo "xvfb xdotool imagemagick fonts-wqy-zenhei" ;;
    *) echo "unknown group: $1" >&2; exit 2 ;;
    esac
}

missing=
for group in "$@"; do
    packages=$(packages_for "$group")
    for package in $packages; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
done
[ -n "$missing" ] || exit 0

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}
echo "installing:$missing"
export DEBIAN_FRONTEND=noninteractive
as_root apt-get update -qq
# shellcheck disable=SC2086 # a list of package names
as_root apt-get install -y -qq --no-install-recommends $missing
