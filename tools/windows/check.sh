#!/bin/sh
# Builds the player for Windows, without optimisation, and plays the golden scripts by it under wine. The engine of the
# installed suite is tried by make windows alone: its tests wait for processes, which a loaded machine makes late.
set -eu
cd "$(dirname "$0")/../.."

sh tools/windows/build_libraries.sh
cmake --preset windows-check
cmake --build --preset windows-check
trap 'sh tools/windows/wine.sh --end' EXIT
python3 tools/windows/play_golden.py build/windows/check/installation/tarvik-play.exe
