# Sourced by run and check: need_packages makes sure that what a step needs is on the machine.
#
# Each need is "WHAT=PACKAGE": WHAT is a command, or a file (it has a slash; patterns work).

# What drawing by the toolkit needs.
# shellcheck disable=SC2034
toolkit_needs=('/usr/lib/*/cmake/Qt6Widgets=qt6-base-dev'
               '/usr/share/fonts/truetype/liberation*/LiberationSans-Regular.ttf=fonts-liberation')

# What the desk needs beside it. Pages of reports are made by LibreOffice, without which it says so.
# shellcheck disable=SC2034
desk_needs=(/usr/include/sqlite3.h=libsqlite3-dev '/usr/lib/*/cmake/Qt6PdfWidgets=qt6-pdf-dev'
            '/usr/lib/*/cmake/Qt6LinguistTools=qt6-tools-dev'
            '/usr/lib/qt6/bin/lrelease=qt6-l10n-tools')

# What packages are made and read by, beside what is built with.
# shellcheck disable=SC2034
package_needs=(git=git dpkg-buildpackage=dpkg-dev dh=debhelper lintian=lintian)

# What the manual is made by.
# shellcheck disable=SC2034
manual_needs=(python3=python3 doxygen=doxygen pandoc=pandoc
              /usr/share/doxygen-awesome-css/doxygen-awesome.css=doxygen-awesome-css)

is_there() {
    if [[ $1 == */* ]]; then compgen -G "$1" >/dev/null; else command -v "$1" >/dev/null; fi
}

# need_packages NEED...: installs what is missing when root on a Debian-like system; otherwise says
# which packages are missing and fails.
need_packages() {
    local need missing=()
    for need in "$@"; do
        is_there "${need%%=*}" || missing+=("${need#*=}")
    done
    ((${#missing[@]})) || return 0
    if ((EUID != 0)) || ! command -v apt-get >/dev/null; then
        printf 'Missing packages: %s\n' "${missing[*]}" >&2
        printf 'Install them with: sudo apt-get install %s\n' "${missing[*]}" >&2
        return 1
    fi
    printf 'Installing: %s\n' "${missing[*]}"
    apt_get update && apt_get install "${missing[@]}"
}

apt_get() {
    local log
    log=$(mktemp)
    if ! DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends \
        -o DPkg::Lock::Timeout=300 "$@" </dev/null >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}
