#!/bin/sh
# Builds the player for Windows, without optimisation, and plays the golden scripts by it under wine; then has the engine
# of the installed suite work with a stand-in for it.
set -eu
cd "$(dirname "$0")/../.."

sh tools/windows/build_libraries.sh
cmake --preset windows-check
cmake --build --preset windows-check
trap 'sh tools/windows/wine.sh --end' EXIT
python3 tools/windows/play_golden.py build/windows/check/installation/tarvik-play.exe
sh tools/windows/wine.sh build/windows/check/bin/test_office_windows_suite.exe --gtest_brief=1
