#!/usr/bin/env bash
# build_sysroot.sh [ARCHIVE]: builds for Windows what Debian has no packages of for MinGW (Qt, libarchive, SQLite), from
# Debian's own source packages, and packs it (build/sysroot.tar.xz unless named). About 25 minutes on two cores.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/prepare.sh
archive=$(realpath -m "${1:-build/sysroot.tar.xz}")
work=$PWD/build/sysroot-work
sysroot=$work/sysroot
prefix=x86_64-w64-mingw32

# The machine's own sources of packages, asked for source packages, with lists of their own: its settings stay as they are.
fetch_sources() {
    local suite lists=$work/apt
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mkdir -p "$lists/parts" "$lists/state/partial" "$work/source"
    find /etc/apt -maxdepth 2 -name '*.list' -exec cat {} + |
        sed -nE "s/^deb ((\[[^]]*\] )?[^ ]+ $suite)/deb-src \1/p" > "$lists/parts/own.list"
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] && grep -qE "^Suites:.* $suite" "$file" || continue
        sed 's/^Types:.*/Types: deb-src/' "$file" > "$lists/parts/$(basename "$file")"
    done
    local options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$lists/parts"
                   -o Dir::State::lists="$lists/state" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update -qq
    (cd "$work/source" && apt-get "${options[@]}" source -qq qt6-base libarchive sqlite3)
}

# Static and with nothing but zlib's packing: ZIP files are all that is read with it.
build_libarchive() {
    cd "$work"/source/libarchive-*/
    autoreconf -fi # Debian's patches make what was generated older than its sources
    ./configure --host=$prefix CC=$prefix-gcc-posix CFLAGS=-O2 --enable-static --disable-shared --disable-bsdtar \
        --disable-bsdcat --disable-bsdcpio --disable-xattr --disable-acl --with-zlib --without-bz2lib --without-libb2 \
        --without-iconv --without-lz4 --without-zstd --without-lzma --without-lzo2 --without-cng --without-mbedtls \
        --without-nettle --without-openssl --without-xml2 --without-expat
    make -j"$(nproc)" libarchive.la
    cp .libs/libarchive.a "$sysroot/lib/"
    cp libarchive/archive.h libarchive/archive_entry.h "$sysroot/include/"
}

build_sqlite() {
    cd "$work"/source/sqlite3-*/
    ./configure --disable-tcl
    make sqlite3.c
    $prefix-gcc-posix -O2 -DSQLITE_THREADSAFE=1 -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_DQS=0 -c sqlite3.c -o sqlite3.o
    $prefix-gcc-ar-posix rcs "$sysroot/lib/libsqlite3.a" sqlite3.o
    cp sqlite3.h "$sysroot/include/"
}

# Without tablets (Debian's source lacks a header), with Direct2D, which printing is linked to.
build_qt() {
    cd "$work"
    KARVO_WINDOWS_SYSROOT=$sysroot cmake -S source/qt6-base-*/ -B qt -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DKARVO_WINDOWS_SYSROOT="$sysroot" -DCMAKE_INSTALL_PREFIX="$sysroot" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_BUILD_EXAMPLES=OFF \
        -DQT_BUILD_TESTS=OFF -DFEATURE_dbus=OFF -DFEATURE_sql=OFF -DFEATURE_opengl=OFF -DINPUT_opengl=no \
        -DINPUT_openssl=no -DFEATURE_tabletevent=OFF -DFEATURE_system_zlib=OFF -DFEATURE_pkg_config=OFF
    cmake --build qt
    cmake --install qt --strip
    # What no program here uses, and what names folders of this computer.
    rm -rf "$sysroot"/plugins/platforms/qdirect2d.dll "$sysroot"/lib/cmake/Qt6Gui/Qt6QWindowsDirect2D*.cmake \
        "$sysroot"/lib/cmake/Qt6BuildInternals "$sysroot"/lib/*.prl "$sysroot"/lib/pkgconfig "$sysroot"/modules "$sysroot"/doc
    find "$sysroot/mkspecs" -mindepth 1 -maxdepth 1 -type d ! -name win32-g++ ! -name common ! -name features \
        -exec rm -rf {} +
}

toolchain=$PWD/packaging/windows/toolchain.cmake
prepare windows-sysroot
rm -rf "$work"
mkdir -p "$sysroot/lib" "$sysroot/include"
(fetch_sources)
(build_libarchive)
(build_sqlite)
(build_qt)
tar -C "$work" -cJf "$archive" sysroot
rm -rf "$work"
echo "$archive"
