#!/usr/bin/env bash
# Proves under Wine what build.sh has made, with one command: the setup and the programs on a first day, the tests, bad input, and rounds
# of which the databases and workbooks must be equal to those of the same rounds on Linux. Ends with a report, and with 1 if anything failed.
#
# Usage: verify.sh [PART]...; without one all of them: setup badInput rounds tests
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
. scripts/packages.sh
. packaging/windows/cache.sh
# shellcheck disable=SC2086
installMissing $buildPackages $testPackages $windowsPackages wine wine64 python3-olefile

# On a screen of its own, and with mounts that end with it.
if [ -z "${FARM_VERIFY:-}" ]; then
    [ "$(id -u)" = 0 ] && root=() || root=(--map-root-user)
    exec env FARM_VERIFY=1 unshare --mount "${root[@]}" xvfb-run -a -s "-screen 0 1366x768x24" "$0" "$@"
fi

work=$(mktemp -d)
export WINEPREFIX=$work/wine WINEDEBUG=-all
# What the tests and the rounds expect on every system; and a user whose name, and so whose folder, is not of ASCII.
export LC_ALL=en_ZA.UTF-8 TZ=Africa/Johannesburg USER="Jörg Müller"
export CCACHE_SLOPPINESS=pch_defines,time_macros
host=$PWD/build/release
windows=$PWD/build/windows/release
user="$WINEPREFIX/drive_c/users/$USER/AppData/Local"
wine=/usr/lib/wine/wine64
end() {
    /usr/lib/wine/wineserver64 -k || true
    umount "$work"/readOnly "$work"/full 2>/dev/null || true
    rm -rf "$work"
}
trap end EXIT

report=()
failures=0
# check SENTENCE COMMAND...: one line of the report.
check() {
    local sentence=$1
    shift
    if "$@" >"$work/output" 2>&1; then
        report+=("passed  $sentence")
    else
        report+=("FAILED  $sentence")
        failures=$((failures + 1))
        tail -n 20 "$work/output"
    fi
    echo "${report[-1]}"
    # The sentence that the program gave.
    [ "$1" != says ] || { report+=("        $(tail -n 1 "$work/output")") && echo "${report[-1]}"; }
}

# showsWindow TITLE PROGRAM: a window whose title begins so appears, and is still there after some seconds.
showsWindow() {
    local process tries
    "$wine" "$2" &
    process=$!
    for tries in {1..30}; do
        sleep 1
        ! xwininfo -root -tree | grep -F "\"$1" || break
    done
    echo "After $tries s"
    sleep 4
    xwininfo -root -tree >"$work/windows.txt"
    kill "$process" && cat "$work/windows.txt" && grep -qF "\"$1" "$work/windows.txt"
}

# says TEXT PROGRAM ARGUMENT...: the program fails with one line that has this text.
says() {
    local text=$1 said
    shift
    if "$@" >"$work/said" 2>&1; then
        cat "$work/said"
        return 1
    fi
    said=$(tr -d '\r' <"$work/said" | grep -v '^wine:')
    echo "$said"
    [ "$(wc -l <<<"$said")" = 1 ] && grep -qF -- "$text" <<<"$said"
}

farmdata() {
    "$wine" "$bin/farmdata.exe" "$@"
}

prepare() {
    "$wine" wineboot -i >/dev/null 2>&1
    # A crash is to end the program, not to ask.
    "$wine" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
    # Wine has no Segoe UI; without a replacement it takes any font.
    local font
    for font in "Segoe UI" "MS Shell Dlg 2" "MS Shell Dlg" Tahoma Arial; do
        "$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "Noto Sans" /f >/dev/null 2>&1
    done
}

setup() {
    local setup program farm=$user/farm-monitoring
    setup=$(echo "$PWD"/build/windows/FarmMonitoring-*-setup.exe)
    bin=$user/Programs/FarmMonitoring/bin
    check "The setup installs silently, for a user named $USER." "$wine" "$setup" /S
    check "Programs, templates and licences are installed." \
        test -e "$bin/FarmMonitoring.exe" -a -e "$bin/../share/farm-monitoring/Templates/PestMoni.xls" -a -e "$bin/../Licences/FarmMonitoring.txt"
    check "The start menu has its entries." \
        test -e "$WINEPREFIX/drive_c/users/$USER/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Farm Monitoring/Farm Monitoring.lnk"
    check "First start of the monitoring: the box with the first steps stays open." showsWindow "Farm Monitoring" "$bin/FarmMonitoring.exe"
    check "It has laid out the templates in the user's folder." test -w "$farm/Templates/PestMoni.xls" -a ! -e "$farm/Databases"
    check "The Main Module stays open." showsWindow "Torvane Data: Main Module" "$bin/MainModule.exe"
    check "farmdata makes a farm in the user's folder." farmdata demo "$farm/Databases"
    check "Second start: the farm opens." showsWindow "Torvane Data: Farm Monitoring" "$bin/FarmMonitoring.exe"
    check "Today's copy of the farm is made." test -n "$(ls "$farm/Databases/Backups" 2>/dev/null)"
    (cd "$farm" && find . -type f -exec sha256sum {} +) >"$work/before"
    check "The setup installs over the installed program." "$wine" "$setup" /S
    # The uninstaller goes on in a copy of itself.
    check "The uninstaller runs silently." "$wine" "$bin/../Uninstall.exe" /S
    for program in 1 2 3 4 5 6 7 8 9 10; do
        [ -e "$bin" ] || break
        sleep 1
    done
    check "Nothing of the program is left." test ! -e "$bin/.."
    check "The farm's data is as it was." sh -c "cd '$farm' && sha256sum --quiet -c '$work/before'"
    check "The registry has no entry of it." sh -c "! '$wine' reg query 'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\FarmMonitoring'"
}

# Folders that cannot be written to, or hold no more, are mounted here.
badInput() {
    local folder=$work/readOnly
    mkdir "$folder"
    mount -t tmpfs none "$folder"
    (cd "$folder" && cmake -E tar xf "$windows"/../FarmMonitoring-*-windows.zip)
    mount -o remount,ro "$folder"
    bin=$(echo "$folder"/FarmMonitoring-*)
    rm -rf "$user/farm-monitoring"
    check "Unpacked where nobody may write, the monitoring opens." showsWindow "Farm Monitoring" "$bin/FarmMonitoring.exe"
    check "It then works in the user's folder." test -w "$user/farm-monitoring/Templates/PestMoni.xls"
    check "A farm is not made where nobody may write: one sentence." says "$folder" farmdata demo "$folder/Databases"

    folder=$work/full
    mkdir "$folder"
    mount -t tmpfs -o size=9m none "$folder"
    check "A farm for a disk that is nearly full." farmdata demo "$folder/Databases"
    sha256sum "$folder"/Databases/*.mdb >"$work/before"
    check "No copy is made on a full disk: one sentence." says "full" farmdata backup "$folder/Databases"
    check "No second farm is made on a full disk: one sentence." says "full" farmdata demo "$folder/Second/Databases"
    check "Nothing is left of them." test -z "$(find "$folder" -type f ! -path "$folder/Databases/*.mdb" ! -name copying.lock)"
    check "The farm is as it was." sha256sum --quiet -c "$work/before"
    check "The farm on the full disk is sound." farmdata check "$folder/Databases"

    folder=$work/$(printf 'Boerdery-Ökonomie %.0s' {1..14})$(printf 'n%.0s' {1..60})
    folder=${folder:0:200}/$(printf 'Lang %.0s' {1..20})Ende
    check "A farm below a path of ${#folder} characters." farmdata demo "$folder/Databases"
    check "A copy of it." farmdata backup "$folder/Databases"
    check "It is sound." farmdata check "$folder/Databases"
    check "A name that Windows reserves is refused: one sentence." says "CON" farmdata lists export "$folder/Databases" "$work/CON.xlsx"
}

# round NAME SYSTEM PREPARED [ARGUMENT]: plays one round on a copy of a prepared folder.
playOn() {
    local name=$1 system=$2 program
    shift 2
    mkdir -p "$work/$system"
    cp -r "$work/prepared/$name" "$work/$system/$name"
    [ "$system" = linux ] && program=("$host/round") || program=("$wine" "$windows/round.exe")
    "${program[@]}" "$work/$system/$name" "$@"
}

rounds() {
    local name
    for name in first-day demonstration imported jet; do
        mkdir -p "$work/prepared/$name/Templates"
        cp "$host"/Templates/*.xls "$work/prepared/$name/Templates"
    done
    "$host/farmdata" demo "$work/prepared/demonstration/Databases" >/dev/null
    "$host/farmdata" import tests/data/jet "$work/prepared/imported/Databases" >/dev/null
    mkdir "$work/prepared/jet/Databases"
    cp tests/data/jet/{ZN4,PestMon,ZN4_Spray}.mdb "$work/prepared/jet/Databases"
    for name in first-day demonstration imported jet; do
        local argument=()
        [ "$name" != first-day ] || argument=(first-day)
        check "Round $name on Linux." playOn "$name" linux "${argument[@]}"
        report+=("        $(tail -n 1 "$work/output")")
        check "Round $name on Windows." playOn "$name" windows "${argument[@]}"
        report+=("        $(grep 'checks passed' "$work/output" || true)")
        check "Equal databases and workbooks of $name." packaging/windows/compare.py "$host/farmdata" "$work/linux/$name" "$work/windows/$name"
        report+=("        $(tail -n 1 "$work/output")")
    done
}

tests() {
    check "All tests are built." cmake --build "$windows"
    check "The tests." ctest --test-dir "$windows" --output-on-failure --no-tests=error -j 2
    report+=("        $(grep 'tests passed' "$work/output" || true)")
}

echo "== Programs"
cmake --preset release -DFARM_BENCH=OFF >/dev/null
cmake --build "$host" --target icons templates farmdata round
configureForWindows "$(librariesFolder)" >/dev/null
cmake --build "$windows" --target FarmMonitoring MainModule farmdata round
packaging/windows/package.sh "$(librariesFolder)" "$host" "$windows"
prepare
[ $# -gt 0 ] || set -- setup badInput rounds tests
for part in "$@"; do
    begin=$SECONDS
    echo "== $part"
    "$part"
    report+=("        $part took $((SECONDS - begin)) s")
done

echo "== Report"
printf '%s\n' "${report[@]}"
echo "$failures failed, ${SECONDS} s"
[ "$failures" = 0 ]
