#!/usr/bin/env bash
# Makes the zip and the setup of the built programs. Usage: package.sh LIBRARIES HOST_BUILD WINDOWS_BUILD
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
libraries=$1 host=$2 built=$3
version=$(sed -n 's/^project(FarmMonitoring VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
out=$PWD/build/windows
name=FarmMonitoring-$version
folder=$out/stage/$name

rm -rf "$out/stage"
mkdir -p "$folder/Templates" "$folder/Licences"
for program in FarmMonitoring MainModule farmdata; do
    x86_64-w64-mingw32-strip -o "$folder/$program.exe" "$built/$program.exe"
done
cp "$host"/Templates/*.xls "$folder/Templates"
# Notepad wants Windows' line ends.
sed 's/$/\r/' LICENSE >"$folder/Licences/FarmMonitoring.txt"
for licence in "$libraries"/licences/*.txt; do
    sed 's/$/\r/' "$licence" >"$folder/Licences/${licence##*/}"
done
sed 's/$/\r/' packaging/windows/README.txt >"$folder/README.txt"

rm -f "$out/$name-windows.zip" "$out/$name-setup.exe"
(cd "$out/stage" && cmake -E tar cf "$out/$name-windows.zip" --format=zip "$name")
cp "$built/src/FarmMonitoring.ico" "$out/stage/setup.ico"
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$folder" -DICON="$out/stage/setup.ico" -DOUT="$out/$name-setup.exe" packaging/windows/setup.nsi
ls -l "$out/$name"-*
