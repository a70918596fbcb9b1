#!/bin/sh
# Builds pugixml, libzip and GoogleTest for Windows from Debian's sources, once.
set -eu
cd "$(dirname "$0")/../.."

libraries=${TARVIK_WINDOWS_LIBRARIES:-$PWD/build/windows/libraries}
sources=$PWD/build/windows/sources
[ ! -e "$libraries/built" ] || exit 0

build() { # package, settings of its build
    package=$1
    shift
    sh tools/windows/fetch_source.sh "$package" "$sources"
    cmake -S "$sources/$package" -B "$sources/$package-build" -G Ninja -Wno-dev --log-level=WARNING \
        --toolchain "$PWD/cmake/windows.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$libraries" -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$sources/$package-build"
    cmake --install "$sources/$package-build" > "$sources/$package-install.txt"
    cp "$sources/$package/debian/copyright" "$libraries/$package.copyright"
}

build pugixml
build libzip -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF -DENABLE_OPENSSL=OFF \
    -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF \
    -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF
# Who uses a static libzip must say so.
sed -i 's/^Cflags:.*/& -DZIP_STATIC/' "$libraries/lib/pkgconfig/libzip.pc"
build googletest
touch "$libraries/built"
