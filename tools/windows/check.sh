#!/bin/sh
# Builds the player for Windows, without optimisation, plays the golden scripts by it under wine, packs it into archive
# and installer, tries both, and has clang-tidy look at the engine of the installed suite, which no other build holds.
# The window, whose Qt takes a quarter of an hour to build, and the tests are left to make windows.
set -eu
cd "$(dirname "$0")/../.."

sh tools/windows/build_libraries.sh
cmake --preset windows-check
cmake --build --preset windows-check
headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)
git ls-files 'engines/suite/*.cpp' | xargs -P 2 -n 2 sh -c 'headers=$1; shift; clang-tidy -quiet "$@" -- -std=c++20 -I. \
    --target=x86_64-w64-mingw32 -nostdinc++ -isystem "$headers/c++" -isystem "$headers/c++/x86_64-w64-mingw32" \
    -isystem /usr/x86_64-w64-mingw32/include' sh "$headers" > build/windows/clang-tidy.txt 2>&1 || {
    grep -E '(warning|error):' -A 4 build/windows/clang-tidy.txt || tail -n 40 build/windows/clang-tidy.txt
    exit 1
}
trap 'sh tools/windows/wine.sh --end' EXIT
cmake --preset release > build/windows/configured.txt
cmake --build --preset release --target tarvik-play
python3 tools/windows/play_golden.py build/windows/check/installation/tarvik-play.exe build/installation/tarvik-play
sh tools/windows/package.sh check
sh tools/windows/try_package.sh
sh tools/windows/try_installer.sh
