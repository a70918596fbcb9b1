#!/bin/sh
# Runs every benchmark beside its peers and prints a table for each. Ends with status 1 when one of them missed a goal.
# usage: bench/run.sh INSTALLATION (the folder of tarvik-play)
set -u
missed=0
for bench in bench/*_bench.py; do
    echo "== $(basename "$bench" .py)"
    /usr/bin/python3 "$bench" "$1" || missed=1 # the one that Debian's packages serve
    echo
done
exit $missed
