#!/bin/sh
# Lays the programs for Windows, their files and the licences of what is in them into one folder, and makes a zip archive
# and an installer of it: build/tarvik-windows.zip and build/tarvik-setup.exe. Two runs over one commit give one archive:
# it is packed twice, and compared.
# usage: package.sh [check]   check: of the player alone, which takes no Qt
set -eu
cd "$(dirname "$0")/../.."

libraries=${TARVIK_WINDOWS_LIBRARIES:-$PWD/build/windows/libraries}
built=build/windows/${1:-release}
folder=build/windows/package/tarvik
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
rm -rf build/windows/package
mkdir -p "$folder/licenses"
cp -R installation/. "$folder"
for program in "$built"/installation/tarvik*.exe; do
    x86_64-w64-mingw32-strip -o "$folder/${program##*/}" "$program"
done
add_qt() {
    for library in Qt6Core Qt6Gui Qt6Widgets; do
        x86_64-w64-mingw32-strip --strip-unneeded -o "$folder/$library.dll" "$libraries/qt/bin/$library.dll"
    done
    for plugin in platforms/qwindows styles/qwindowsvistastyle imageformats/qjpeg; do
        mkdir -p "$folder/${plugin%/*}"
        x86_64-w64-mingw32-strip --strip-unneeded -o "$folder/$plugin.dll" "$libraries/qt/plugins/$plugin.dll"
    done
    mkdir "$folder/translations"
    cp /usr/share/qt6/translations/qtbase_zh_CN.qm "$folder/translations"
    cp "$libraries/qt6-base.copyright" "$folder/licenses/qt6-base.txt"
}
[ ! -e "$folder/tarvik.exe" ] || add_qt
for package in pugixml libzip; do
    cp "$libraries/$package.copyright" "$folder/licenses/$package.txt"
done
cp /usr/share/doc/libz-mingw-w64-dev/copyright "$folder/licenses/zlib.txt"
cp /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright "$folder/licenses/compiler.txt"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$folder/licenses/mingw-w64-runtime-and-winpthreads.txt"
cp /usr/share/common-licenses/LGPL-3 /usr/share/common-licenses/GPL-3 "$folder/licenses"

rm -f build/tarvik-windows.zip
python3 tools/windows/make_archive.py "$folder" build/tarvik-windows.zip
find "$folder" -exec touch {} + # as if built later
python3 tools/windows/make_archive.py "$folder" build/windows/package/again.zip
cmp build/tarvik-windows.zip build/windows/package/again.zip
version=$(sed -n 's/^project(Tarvik VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
makensis -V2 -DFOLDER="$PWD/$folder" -DOUTPUT="$PWD/build/tarvik-setup.exe" -DVERSION="$version" \
    -DSIZE="$(du -sk "$folder" | cut -f 1)" -DICON="$PWD/$built/resources/tarvik.ico" \
    tools/windows/installer.nsi
ls -l build/tarvik-windows.zip build/tarvik-setup.exe
