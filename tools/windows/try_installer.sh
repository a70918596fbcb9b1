#!/bin/sh
# Tries the installer under wine: installs, makes the dockets there, installs over it, uninstalls. What a user made or
# changed must stay throughout. A Windows that is too old and a program that runs are refused, and nothing changes then.
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

wine_version() {
    sh "$wine" reg add 'HKCU\Software\Wine' /v Version /d "$1" /f > build/windows/registry.txt
    sh "$wine" --end # it is read when its services start
}
status_of_setup() {
    status=0
    sh "$wine" "$setup" /S '/D=C:\Tarvik试装' || status=$?
    echo "$status"
}
checksums() {
    (cd "$folder" && find . -type f -exec cksum {} +) | sort -k 3
}

rm -rf "$folder"
x86_64-w64-mingw32-strings -el "$setup" > build/windows/strings.txt
grep -q ProductVersion build/windows/strings.txt || fail "it does not say what it is"
wine_version win81
[ "$(status_of_setup)" = 3 ] || fail "it does not refuse a Windows that is too old"
[ ! -e "$folder" ] || fail "something is installed on a Windows that is too old"
wine_version win10
install
sh "$wine" reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvik' > build/windows/registry.txt
for value in DisplayName DisplayIcon DisplayVersion Publisher InstallLocation EstimatedSize UninstallString \
    QuietUninstallString 'NoModify.*0x1' 'NoRepair.*0x1'; do
    grep -q "$value" build/windows/registry.txt || fail "the list of programs lacks $value"
done
in_menu || fail "nothing in the start menu"
find installation build/windows/package/tarvik -type f -printf '%P\n' | while read -r file; do
    [ -e "$folder/$file" ] || fail "$file is not installed"
done
mkdir "$folder/out"
(cd "$folder" && sh "$wine" tarvik-play.exe --drive d=out docket.play > out/played.txt) || fail "the player's status"
[ "$(find "$folder/out" -name '*.xlsx' | wc -l)" = 27 ] || fail "the player did not make 27 dockets"
echo 'the user'"'"'s' > "$folder/3139.txt"
rm "$folder/z9.xlsx"
checksums > build/windows/installed.txt
install
[ -e "$folder/z9.xlsx" ] || fail "a missing file does not come back"
rm "$folder/z9.xlsx"
checksums > build/windows/installed-again.txt
grep -v 'uninstall.exe$' build/windows/installed.txt > build/windows/before.txt
grep -v 'uninstall.exe$' build/windows/installed-again.txt | diff build/windows/before.txt - || fail "the second time changed a file"

# Once the player has started, which waits for the first line of its script, nothing can be laid over it.
script=$PWD/build/windows/script
rm -f "$script"
mkfifo "$script"
(cd "$folder" && exec sh "$wine" tarvik-play.exe --drive d=out - < "$script") &
exec 8> "$script"
tries=0
until [ "$(status_of_setup)" = 4 ]; do
    tries=$((tries + 1))
    [ $tries -lt 20 ] || fail "it does not refuse to be laid over a program that runs"
done
exec 8>&-
wait $! || fail "the status of the player that was waiting"
[ ! -e "$folder/z9.xlsx" ] || rm "$folder/z9.xlsx" # of an attempt that came too early
checksums | grep -v 'uninstall.exe$' | diff build/windows/before.txt - || fail "a refusal changes a file"

sh "$wine" "$folder/uninstall.exe" /S || fail "the status of what uninstalls"
tries=0
while [ -e "$folder/uninstall.exe" ]; do # it works on as a copy of itself
    tries=$((tries + 1))
    [ $tries -lt 120 ] || fail "it does not uninstall"
    sleep 0.5
done
in_menu && fail "something stays in the start menu"
checksums > build/windows/left.txt
grep -vE ' \./([^/]*\.exe|[^/]*\.dll|(platforms|styles|imageformats|translations|licenses)/.*)$' build/windows/before.txt |
    diff - build/windows/left.txt || fail "what stays is not what the user had"
echo "the installer: installed, 27 dockets made, installed over it, refused twice, uninstalled; the user's files are there"
