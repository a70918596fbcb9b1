#!/bin/sh
# Runs every benchmark beside its peers and prints a table for each.
# usage: bench/run.sh INSTALLATION (the folder of tarvik-play)
set -eu
for bench in bench/*_bench.py; do
    echo "== $(basename "$bench" .py)"
    python3 "$bench" "$1"
    echo
done
