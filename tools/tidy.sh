#!/bin/sh
# clang-tidy over every program file that a build compiles. Stops when it finds something, and when it would look at
# hardly any file.
set -eu
build=build/tidy
# Only its compile commands are wanted; clang reads no headers that GCC has precompiled.
cmake -G Ninja -B "$build" -DCMAKE_BUILD_TYPE=Debug -DTARVIK_PRECOMPILE=OFF > /dev/null
ninja -C "$build" -t targets all | grep -q '^libreoffice_headers:' && ninja -C "$build" libreoffice_headers
python3 - "$build" > "$build/tidy_files.txt" << 'END'
import json, pathlib, sys
root = pathlib.Path.cwd()
compiled = {pathlib.Path(one["directory"], one["file"]).resolve() for one in
            json.loads(pathlib.Path(sys.argv[1], "compile_commands.json").read_text())}
own = [file.relative_to(root) for file in sorted(compiled) if file.is_relative_to(root)]
print(*(file for file in own if file.parts[0] not in ("tests", "build")), sep="\n")
END
count=$(grep -c . "$build/tidy_files.txt")
[ "$count" -ge 100 ] || { echo "clang-tidy: only $count files to look at"; exit 1; }
echo "clang-tidy: $count files"
xargs -P 2 -n 8 clang-tidy -quiet -p "$build" -extra-arg=-Wno-unknown-warning-option < "$build/tidy_files.txt" \
    > build/clang-tidy.txt 2>&1 || {
    grep -E '(warning|error):' -A 4 build/clang-tidy.txt || tail -n 40 build/clang-tidy.txt
    exit 1
}
