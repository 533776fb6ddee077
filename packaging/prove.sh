#!/usr/bin/env bash
# Makes the Debian package and proves it: its Depends name every library that its programs link, and it installs, starts and takes
# in a farm on a clean Debian 12 made for the purpose. Without mmdebstrap the package is only unpacked and started from there.
#
# Usage: packaging/prove.sh [BUILD_FOLDER]; without one the release build is made.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

build=${1:-}
if [ -z "$build" ]; then
    build=build/release
    cmake --preset release -DFARM_BENCH=OFF >/dev/null
    cmake --build "$build" --target FarmMonitoring MainModule farmdata templates
fi
build=$(readlink -f "$build")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

(cd "$build" && cpack -G DEB -B "$work" >"$work/cpack.log") || { cat "$work/cpack.log"; exit 1; }
package=$(echo "$work"/*.deb)
mkdir -p "$build/package"
cp "$package" "$build/package"
echo "Package: $build/package/${package##*/}"
dpkg-deb -c "$package" | awk '$1 !~ /^d/ {print "  " $6}'

# Each library that a program names must belong to a package in Depends.
dpkg-deb -x "$package" "$work/root"
depends=$(dpkg-deb -f "$package" Depends)
echo "Depends: $depends"
for program in farm-monitoring farm-main-module farmdata; do
    ldd "$work/root/usr/bin/$program" >"$work/ldd"
    ! grep 'not found' "$work/ldd"
    for library in $(objdump -p "$work/root/usr/bin/$program" | awk '$1 == "NEEDED" {print $2}'); do
        path=$(awk -v name="$library" '$1 == name {print $3; exit}' "$work/ldd")
        # The loader may name a library through the link /lib, and its package by the folder behind it.
        owner=$(dpkg -S "${path:-*/$library}" "/usr$path" 2>/dev/null | head -n 1 | cut -d: -f1 || true)
        [ -n "$owner" ] && grep -Eq "(^|, )${owner//+/\\+}( |,|$)" <<<"$depends" || { echo "$program links $library of \"$owner\", which Depends does not name"; exit 1; }
    done
done
echo "Every linked library is in Depends."

# What a user does on the first day. The program stays open until it is ended, 124 is the status of that.
cat >"$work/first-day.sh" <<'DAY'
set -eu
bin=$1
HOME=$(mktemp -d)
export HOME QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
unset XDG_DATA_HOME
folder=$HOME/.local/share/farm-monitoring
staysOpen() { status=0; timeout 8 "$bin/$1" || status=$?; [ "$status" = 124 ]; }
staysOpen farm-monitoring
[ -w "$folder/Templates/PestMoni.xls" ] && [ -w "$folder/Templates/Analysis.xls" ] && [ ! -e "$folder/Databases" ]
echo "First start: templates are laid out, and the box with the first steps is open."
staysOpen farm-main-module
echo "The Main Module is open on its start page."
"$bin/farmdata" demo "$folder/Databases" >/dev/null
staysOpen farm-monitoring
ls "$folder"/Databases/Backups/* >/dev/null
echo "Second start: the farm is open, and today's copy of it is made."
rm -rf "$HOME"
DAY

if command -v mmdebstrap >/dev/null; then
    echo "Installing on a clean Debian 12"
    mmdebstrap --variant=apt --include=ca-certificates \
        --customize-hook="copy-in $package $work/first-day.sh /tmp" \
        --customize-hook="chroot \"\$1\" apt-get install -y -q --no-install-recommends /tmp/${package##*/} >$work/install.log 2>&1" \
        --customize-hook='chroot "$1" sh /tmp/first-day.sh /usr/bin' \
        bookworm "$work/clean.tar" >"$work/mmdebstrap.log" 2>&1 || { tail -n 30 "$work/mmdebstrap.log" "$work/install.log"; exit 1; }
    grep -a 'start:' "$work/mmdebstrap.log" || true
else
    echo "mmdebstrap is not installed: starting the unpacked package instead"
    sh "$work/first-day.sh" "$work/root/usr/bin"
fi
echo "Proved."
