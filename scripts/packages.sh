# Sourced by ./run and ./test: installs the Debian packages that are missing.

buildPackages="g++ cmake ninja-build mold ccache pkg-config qt6-base-dev qt6-svg-dev libsqlite3-dev libxlsxwriter-dev libminizip-dev libgsf-1-dev"
runPackages="fonts-noto-core xvfb xauth x11-utils"
testPackages="$runPackages python3 python3-xlrd python3-openpyxl libreoffice-calc-nogui mdbtools sqlite3 libbenchmark-dev clang-format locales-all"

# installMissing PACKAGE...: as root or through sudo; else prints the one command that an administrator has to give.
installMissing() {
    local missing=""
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    local become=""
    if [ "$(id -u)" -ne 0 ]; then
        # sudo may ask for a password only where somebody can type one.
        if ! command -v sudo >/dev/null || { [ ! -t 0 ] && ! sudo -n true 2>/dev/null; }; then
            echo "Some packages are missing. Please have this command run, then try again:" >&2
            echo "  apt-get install --no-install-recommends$missing" >&2
            exit 1
        fi
        become="sudo"
    fi
    echo "Installing:$missing"
    # A list of packages that is out of date makes the first try fail.
    # shellcheck disable=SC2086
    $become env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing >/dev/null 2>&1 ||
        { $become apt-get update -q >/dev/null &&
            $become env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing >/dev/null; }
}
