#!/bin/sh
# Tries the installer under wine: installs, makes the dockets there, installs over it, uninstalls. What a user made or
# changed must stay throughout.
set -eu
cd "$(dirname "$0")/../.."

wine=$PWD/tools/windows/wine.sh
WINEPREFIX=${WINEPREFIX:-$PWD/build/windows/wine}
export WINEPREFIX
trap 'sh "$wine" --end' EXIT
fail() {
    echo "the installer: $1" >&2
    exit 1
}
setup=build/tarvik-setup.exe
folder="$WINEPREFIX/drive_c/Tarvik试装"
in_menu() {
    find "$WINEPREFIX/drive_c" -name 'Tarvik 计算.lnk' | grep -q .
}
# A blank in the folder would be quoted on the way, which the installer does not take.
install() {
    sh "$wine" "$setup" /S '/D=C:\Tarvik试装' || fail "its status"
}

rm -rf "$folder"
install
in_menu || fail "nothing in the start menu"
find installation build/windows/package/tarvik -type f -printf '%P\n' | while read -r file; do
    [ -e "$folder/$file" ] || fail "$file is not installed"
done
mkdir "$folder/out"
(cd "$folder" && sh "$wine" tarvik-play.exe --drive d=out docket.play > out/played.txt) || fail "the player's status"
[ "$(find "$folder/out" -name '*.xlsx' | wc -l)" = 27 ] || fail "the player did not make 27 dockets"
echo 'the user'"'"'s' > "$folder/3139.txt"
rm "$folder/z9.xlsx"
(cd "$folder" && find . -type f -exec cksum {} +) | sort -k 3 > build/windows/installed.txt
install
[ -e "$folder/z9.xlsx" ] || fail "a missing file does not come back"
rm "$folder/z9.xlsx"
(cd "$folder" && find . -type f -exec cksum {} +) | sort -k 3 > build/windows/installed-again.txt
grep -v 'uninstall.exe$' build/windows/installed.txt > build/windows/before.txt
grep -v 'uninstall.exe$' build/windows/installed-again.txt | diff build/windows/before.txt - || fail "the second time changed a file"

sh "$wine" "$folder/uninstall.exe" /S || fail "the status of what uninstalls"
tries=0
while [ -e "$folder/uninstall.exe" ]; do # it works on as a copy of itself
    tries=$((tries + 1))
    [ $tries -lt 120 ] || fail "it does not uninstall"
    sleep 0.5
done
in_menu && fail "something stays in the start menu"
(cd "$folder" && find . -type f -exec cksum {} +) | sort -k 3 > build/windows/left.txt
grep -vE ' \./([^/]*\.exe|[^/]*\.dll|(platforms|styles|imageformats|licenses)/.*)$' build/windows/before.txt |
    diff - build/windows/left.txt || fail "what stays is not what the user had"
echo "the installer: installed, 27 dockets made, installed over it, uninstalled; the user's files are there"
