#!/usr/bin/env bash
# Makes the program for 64-bit Windows on Debian 12, with one command:
#   build/windows/FarmMonitoring-VERSION-windows.zip    to unpack and start
#   build/windows/FarmMonitoring-VERSION-setup.exe      to install
# Qt and the other libraries are built once, into ~/.cache/farm-windows (or FARM_WINDOWS_CACHE); that takes about half an hour.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
. scripts/packages.sh
. packaging/windows/cache.sh
# shellcheck disable=SC2086
installMissing $buildPackages $windowsPackages

prefix=$(librariesFolder)
[ -e "$prefix/complete" ] || packaging/windows/libraries.sh "$prefix"

export CCACHE_SLOPPINESS=pch_defines,time_macros
echo "== Programs of this machine: icons and templates"
cmake --preset release -DFARM_BENCH=OFF >/dev/null
cmake --build build/release --target icons templates

echo "== The project"
configureForWindows "$prefix" >/dev/null
cmake --build build/windows/release --target FarmMonitoring MainModule farmdata

packaging/windows/package.sh "$prefix" build/release build/windows/release
