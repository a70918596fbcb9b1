#!/bin/sh
# Searches with every fuzzer for so many seconds and tells what came of it. Inputs that reach something new and the
# findings stay in build/fuzz/found, or in TARVIK_FUZZ_FOLDER.
# usage: run.sh SECONDS [TARGET...]
set -eu
cd "$(dirname "$0")/.."
seconds=$1; shift
[ $# -gt 0 ] || set -- text_decoding columns text_queries look_ups design workbook formula document dictionary_import player
work=${TARVIK_FUZZ_FOLDER:-$PWD/build/fuzz/found}
export TARVIK_FUZZ_FOLDER="$work"
TMPDIR=$(mktemp -d /dev/shm/tarvik-fuzz.XXXXXX); export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
status=0
printf '%-20s %12s %8s %s\n' target executions seconds findings
for target in "$@"; do
    mkdir -p "$work/$target" "$work/findings"
    dictionary=; [ ! -f "fuzz/dictionaries/$target.dict" ] || dictionary="-dict=fuzz/dictionaries/$target.dict"
    begun=$(date +%s)
    # The processor is left to others, so a time limit is a generous one.
    # shellcheck disable=SC2086 # one word or none
    nice -n 19 build/fuzz/bin/fuzz_$target "-max_total_time=$seconds" -print_final_stats=1 -timeout=120 -report_slow_units=60 \
        -rss_limit_mb=2048 -max_len=65536 "-artifact_prefix=$work/findings/$target-" $dictionary "$work/$target" \
        "build/fuzz/fuzz/seeds/$target" "fuzz/seeds/$target" >"$work/$target.log" 2>&1 || status=1
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/$target.log")
    findings=$(find "$work/findings" -name "$target-*" ! -name "*-slow-unit-*" | wc -l)
    printf '%-20s %12s %8s %s\n' "$target" "${executions:-crash}" "$(($(date +%s) - begun))" "$findings"
done
exit $status
