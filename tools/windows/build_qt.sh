#!/bin/sh
# Builds the parts of Qt that the window needs for Windows, from Debian's source and with the tools of the installed Qt;
# once: a quarter of an hour with two cores. Further arguments go to CMake.
set -eu
cd "$(dirname "$0")/../.."

libraries=${TARVIK_WINDOWS_LIBRARIES:-$PWD/build/windows/libraries}
sources=$PWD/build/windows/sources
[ ! -e "$libraries/qt/built" ] || exit 0

sh tools/windows/fetch_source.sh qt6-base "$sources"
# Debian leaves out the header for drawing tablets: the part that talks to the system does without them.
sed -i 's/#if QT_CONFIG(tabletevent)/#if 0/; s/CONDITION QT_FEATURE_tabletevent$/CONDITION FALSE/' \
    "$sources"/qt6-base/src/plugins/platforms/windows/CMakeLists.txt \
    "$sources"/qt6-base/src/plugins/platforms/windows/qwindows[cp]o*
left_out="sql network dbus xml testlib concurrent printsupport vulkan icu zstd glib direct2d directwrite3 openssl
    sessionmanager systemtrayicon undocommand wizard mdiarea calendarwidget colordialog fontdialog errormessage
    lcdnumber dial splashscreen syntaxhighlighter textodfwriter pdf gif"
settings=
host_info=$(echo /usr/lib/*/cmake/Qt6HostInfo)
for feature in $left_out; do settings="$settings -DFEATURE_$feature=OFF"; done
for library in jpeg png freetype harfbuzz pcre2 doubleconversion zlib; do
    settings="$settings -DFEATURE_system_$library=OFF"
done
# shellcheck disable=SC2086 # settings without blanks in them
cmake -S "$sources/qt6-base" -B "$sources/qt6-base-build" -G Ninja -Wno-dev --toolchain "$PWD/cmake/windows.cmake" \
    -DCMAKE_BUILD_TYPE=MinSizeRel -DCMAKE_CXX_FLAGS=-w -DCMAKE_INSTALL_PREFIX="$libraries/qt" -DBUILD_SHARED_LIBS=ON \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$(dirname "$host_info")" -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DINPUT_opengl=no \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF $settings "$@"
cmake --build "$sources/qt6-base-build"
cmake --install "$sources/qt6-base-build" > "$sources/qt6-base-install.txt"
cp "$sources/qt6-base/debian/copyright" "$libraries/qt6-base.copyright"
touch "$libraries/qt/built"
