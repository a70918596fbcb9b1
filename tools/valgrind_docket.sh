#!/bin/sh
# Plays the docket road under valgrind; any error or lost block fails.
# usage: valgrind_docket.sh INSTALLATION
set -eu
installation=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp -r installation "$folder/installation"
mkdir "$folder/d"
valgrind --quiet --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite \
    "$installation/tarvik-play" --install "$folder/installation" --drive "d=$folder/d" "$folder/installation/docket.play"
