#!/bin/sh
# Fetches and unpacks the source of a Debian package. The lists of sources are this folder's own, made from the
# system's places of packages, so that nothing of the system's changes.
# usage: fetch_source.sh package folder    (leaves folder/package/)
set -eu

package=$1
mkdir -p "$2"
folder=$(cd "$2" && pwd)
[ ! -e "$folder/$package" ] || exit 0

apt_folder=$folder/apt
mkdir -p "$apt_folder/parts" "$apt_folder/lists/partial" "$apt_folder/cache/archives/partial"
: > "$apt_folder/sources.list"
[ ! -e /etc/apt/sources.list ] || sed -n 's/^deb /deb-src /p' /etc/apt/sources.list > "$apt_folder/sources.list"
[ ! -e /etc/apt/sources.list.d/debian.sources ] ||
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$apt_folder/parts/debian.sources"

options="-qq -o APT::Sandbox::User=$(id -un) -o Dir::Etc::SourceList=$apt_folder/sources.list
    -o Dir::Etc::SourceParts=$apt_folder/parts -o Dir::State::Lists=$apt_folder/lists -o Dir::Cache=$apt_folder/cache"
# shellcheck disable=SC2086 # options without blanks in them
[ -e "$apt_folder/updated" ] || apt-get $options update
touch "$apt_folder/updated"
mkdir -p "$folder/unpacking"
cd "$folder/unpacking"
# shellcheck disable=SC2086
apt-get $options source "$package"
for found in */; do # the one folder that the archives are unpacked to
    mv "$found" "$folder/$package"
done
cd ..
rm -rf unpacking
