#!/bin/sh
# Tries the packages in a bare Debian 12 that it makes: first start, dockets, a later version, removal, all as an
# ordinary user. Needs root and debootstrap.
# usage: try_package.sh tarvik_VERSION_ARCH.deb
set -eu
package=$1
root=$(mktemp -d)
chmod 755 "$root"
trap 'umount "$root/proc" 2> /dev/null || true; rm -rf "$root"' EXIT
fail() {
    echo "try package: $1" >&2
    exit 1
}
inside() { chroot "$root" /usr/bin/env LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
clerk() { inside su clerk -c "cd && $1"; }
has() { [ "$(find "$root/home/clerk/out" -name '*.xlsx' | wc -l)" = "$1" ] || fail "not $1 dockets"; }

debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian > "$root.log" || fail "see $root.log"
rm -f "$root.log"
mount -t proc proc "$root/proc"
inside useradd -m clerk
cp "$package" "$root/tmp/tarvik.deb"
inside apt-get install -y -qq --no-install-recommends /tmp/tarvik.deb > /dev/null

echo "== first start to dockets"
own=$root/home/clerk/.local/share/tarvik
for program in tarvik tarvik-play tarvik-dictionary; do clerk "$program --version && $program --help > /dev/null"; done
clerk 'mkdir out && tarvik-play --drive d=out docket.play > played.txt'
grep -q '^message .*不能\|^message .*无法' "$root/home/clerk/played.txt" && fail "a box of trouble"
has 27
diff -r -x .handed-out -x '*.xlsx' "$root/usr/share/tarvik/installation" "$own" > "$root/tmp/differences" ||
    grep -v "^Only in $own" "$root/tmp/differences" && fail "the own folder lacks something"

echo "== the window"
clerk 'QT_QPA_PLATFORM=offscreen timeout 5 tarvik .local/share/tarvik/3139.txt; [ $? = 124 ]' || fail "the window ended"

echo "== a later version"
echo mine > "$own/z6.xlsx"
rm "$own/z9.xlsx"
dpkg-deb -R "$package" "$root/tmp/later"
sed -i 's/^Version: .*/&+later/' "$root/tmp/later/DEBIAN/control"
echo new > "$root/tmp/later/usr/share/tarvik/installation/new.txt"
echo changed > "$root/tmp/later/usr/share/tarvik/installation/z6.xlsx"
dpkg-deb -b --root-owner-group "$root/tmp/later" "$root/tmp/later.deb" > /dev/null
inside apt-get install -y -qq --no-install-recommends /tmp/later.deb > /dev/null
clerk 'echo say done | tarvik-play - > /dev/null'
[ "$(cat "$own/new.txt")" = new ] || fail "the new file did not come"
[ "$(cat "$own/z6.xlsx")" = mine ] || fail "a file of the user's was replaced"
[ ! -e "$own/z9.xlsx" ] || fail "a deleted file came back"

echo "== removal"
inside apt-get purge -y -qq tarvik > /dev/null
[ ! -e "$root/usr/share/tarvik" ] || fail "something is left in /usr/share/tarvik"
[ "$(cat "$own/z6.xlsx")" = mine ] || fail "the user's files went with the package"
has 27
echo "try package: all is well"
