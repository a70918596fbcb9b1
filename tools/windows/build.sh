#!/bin/sh
# Everything for Windows: libraries, programs, tests under wine, archive and installer, and both tried.
set -eu
cd "$(dirname "$0")/../.."

sh tools/windows/build_libraries.sh
sh tools/windows/build_qt.sh
cmake --preset release
cmake --build --preset release --target tarvik-play
cmake --preset windows
cmake --build --preset windows
trap 'sh tools/windows/wine.sh --end' EXIT
ctest --preset windows --no-tests=error
python3 tools/windows/play_golden.py build/windows/release/installation/tarvik-play.exe build/installation/tarvik-play
sh tools/windows/package.sh
sh tools/windows/try_package.sh
sh tools/windows/try_installer.sh
