#!/usr/bin/env bash
# Builds Qt, SQLite, minizip and libxlsxwriter for Windows from Debian's source packages into PREFIX. Usage: libraries.sh PREFIX
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
. packaging/windows/cache.sh

prefix=$1
work=$prefix.work
rm -rf "$prefix" "$work"
mkdir -p "$prefix/licences" "$work/lists/partial" "$work/parts"
toolchain=$PWD/packaging/windows/toolchain.cmake
release=(-G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX="$prefix")
for language in C CXX; do
    ! command -v ccache >/dev/null || release+=(-DCMAKE_${language}_COMPILER_LAUNCHER=ccache)
done
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1

# A list of sources of its own: the machine's lists stay as they are.
fetchSources() {
    local keys=/usr/share/keyrings/debian-archive-keyring.gpg
    printf 'deb-src [signed-by=%s] http://deb.debian.org/%s main\n' \
        "$keys" 'debian bookworm' "$keys" 'debian bookworm-updates' "$keys" 'debian-security bookworm-security' >"$work/sources.list"
    local apt=(apt-get -q -o "Dir::Etc::sourcelist=$work/sources.list" -o "Dir::Etc::sourceparts=$work/parts" -o "Dir::State::lists=$work/lists"
        -o "Dir::Cache::srcpkgcache=$work/sources.bin" -o "Dir::Cache::pkgcache=$work/packages.bin" -o APT::Sandbox::User=root)
    "${apt[@]}" update >"$work/apt.log"
    for package in $sourcePackages; do
        local version
        version=$(sourceVersion "$package")
        (cd "$work" && "${apt[@]}" source --download-only "$package=$version" >>apt.log 2>&1) ||
            { echo "The source of $package $version cannot be fetched; is the machine up to date (apt-get upgrade)?"; tail -n 3 "$work/apt.log"; exit 1; } >&2
        # Debian's own patches are applied, those against security faults among them.
        dpkg-source -x "$work"/"$package"_*.dsc "$work/$package" >>"$work/apt.log" 2>&1
        cp "$work/$package/debian/copyright" "$prefix/licences/$package.txt"
    done
}

# What the program uses of Qt, with the copies of zlib, libpng and so on that are in Qt's source. Tablets need a header that Debian lacks.
buildQt() {
    local off=() feature
    for feature in system_zlib system_png system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion \
        dbus opengl dynamicgl vulkan direct2d1_1 glib icu zstd network sql xml concurrent tabletevent gif jpeg; do
        off+=("-DFEATURE_$feature=OFF")
    done
    cmake -S "$work/qt6-base" -B "$work/qt-build" "${release[@]}" "${off[@]}" \
        -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF >"$work/qt-configure.log" 2>&1 || { tail -n 30 "$work/qt-configure.log"; exit 1; }
    nice ninja -C "$work/qt-build" -j "$(nproc)"
    cmake --install "$work/qt-build" >/dev/null
    cp "$work"/qt6-base/LICENSES/{LGPL-3.0-only,GPL-3.0-only}.txt "$prefix/licences"
}

buildOthers() {
    # SQLite is one file made of its sources.
    mkdir "$work/sqlite3-build"
    (cd "$work/sqlite3-build" && ../sqlite3/configure --disable-tcl >configure.log && make sqlite3.c >make.log)
    cmake -S packaging/windows/libraries -B "$work/libraries-build" "${release[@]}" -DSOURCES="$work" >/dev/null
    cmake --build "$work/libraries-build" --target install
    cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib.txt"
    cp /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright "$prefix/licences/gcc-runtime.txt"
    cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$prefix/licences/mingw-w64.txt"
}

fetchSources
buildQt
buildOthers
rm -rf "$work"
touch "$prefix/complete"
