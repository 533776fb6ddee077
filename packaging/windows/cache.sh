# shellcheck shell=bash
# Sourced by the scripts of this folder.

windowsPackages="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev tcl nsis dpkg-dev"
sourcePackages="qt6-base sqlite3 libxlsxwriter minizip"

# The version of a source package is that of its library on this machine: Qt's generators run here.
sourceVersion() {
    case $1 in
        qt6-base) set -- qt6-base-dev ;;
        sqlite3) set -- libsqlite3-dev ;;
        libxlsxwriter) set -- libxlsxwriter-dev ;;
        minizip) set -- libminizip-dev ;;
    esac
    dpkg-query -W -f='${source:Version}' "$1"
}

# The folder of the libraries for these versions, this compiler and these flags.
librariesFolder() {
    local key
    key=$({
        for package in $sourcePackages; do
            sourceVersion "$package"
        done
        dpkg-query -W -f='${Version}' g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev libz-mingw-w64-dev
        cat packaging/windows/{libraries.sh,toolchain.cmake,libraries/CMakeLists.txt}
    } | sha256sum | cut -c 1-16)
    echo "${FARM_WINDOWS_CACHE:-$HOME/.cache/farm-windows}/$key"
}

# configureForWindows LIBRARIES: needs icons and make_templates in build/release.
configureForWindows() {
    cmake -S . -B build/windows/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DFARM_BENCH=OFF -DFARM_HOST_BUILD="$PWD/build/release" \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/packaging/windows/toolchain.cmake" -DCMAKE_FIND_ROOT_PATH="$1" \
        -DCMAKE_CROSSCOMPILING_EMULATOR="$PWD/packaging/windows/wine.sh"
}
