#!/bin/sh
# Plays the docket road on the sample reports without a display and lists what came out.
# usage: play_docket.sh INSTALLATION
set -eu
installation=$1
output=${TARVIK_OUTPUT:-build/output}
mkdir -p "$output"
"$installation/tarvik-play" --drive "d=$output" "$installation/docket.play"
echo
echo "dockets in $output:"
find "$output" -name '*.xlsx' -printf '%P\n' | sort
