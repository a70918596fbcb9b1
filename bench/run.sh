#!/bin/sh
# Runs every benchmark beside its peers and tells figures, ratios and growth; writes them as a page with a picture into
# a folder. Ends with status 1 when one of them missed a goal.
# usage: bench/run.sh INSTALLATION FOLDER (of tarvik-play, and of the page)
set -u
missed=0
started=$(date +%s)
TARVIK_FIGURES=$(mktemp)
export TARVIK_FIGURES
trap 'rm -f "$TARVIK_FIGURES"' EXIT
# A peer of the column engine; without npm or a registry the benchmark says that it is left out.
command -v npm > /dev/null && npm install --silent --no-audit --no-fund --prefix "$1/../duckdb" @duckdb/node-api
for bench in bench/*_bench.py; do
    echo "== $(basename "$bench" .py)"
    /usr/bin/python3 "$bench" "$1" || missed=1 # the one that Debian's packages serve
    echo
done
/usr/bin/python3 bench/report.py "$TARVIK_FIGURES" "$2" $((($(date +%s) - started + 59) / 60)) || missed=1
exit $missed
