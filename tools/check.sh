#!/bin/sh
# Format, layers, the tests under the sanitizers, the player for Windows under wine, clang-tidy. Stops at the first that
# finds something.
set -eu
cd "$(dirname "$0")/.."

sources=$(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
echo "== format"
# shellcheck disable=SC2086 # a list of file names without blanks
clang-format --dry-run -Werror $sources
echo "== layers"
python3 tools/check_layers.py --test
python3 tools/check_layers.py
echo "== tests under the address and undefined-behaviour sanitizers"
cmake --preset asan
cmake --build --preset asan
# The preset keeps the leak checker from guessing where the thread-local data of a plugin stand: where these begin 16
# bytes behind a page, GCC 12's takes what lies before them for a header of an old C library, and dies.
ctest --preset asan -j 2 --no-tests=error
echo "== tests of all that runs in threads under the thread sanitizer"
cmake --preset tsan
cmake --build --preset tsan
ctest --preset tsan -j 2 --no-tests=error
echo "== the player for Windows and its golden scripts under wine"
sh tools/windows/check.sh
echo "== clang-tidy"
python3 tools/tidy.py
echo "check: nothing found"
