#!/usr/bin/env bash
# Makes a Debian 12 machine ready to build and run: packages, a Chinese locale and the Wine prefix.
#
# Runs as root or as a user with sudo, as often as wanted: what is there already costs nothing.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(
    cmake ninja-build g++-mingw-w64-x86-64-posix    # cross build
    wine64                                          # running it
    googletest nlohmann-json3-dev libcli11-dev      # tests and simulator
    libz-mingw-w64-dev                              # workbook files of the simulator
    librsvg2-bin                                    # icons
    fonts-wqy-microhei                              # Chinese texts in exported PDF files
    clang-14 clang-format-14 clang-tidy-14          # tools/lint.sh
    eslint node-js-beautify                         # the same, for the page's script and style
)

fail() {
    echo "setup: error: $*" >&2
    exit 1
}

missing_packages() {
    local installed
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
        sed -n 's/ installed$//p' || true)
    for package in "${packages[@]}"; do
        grep -qxF "$package" <<<"$installed" || echo "$package"
    done
}

install_packages() {
    command -v dpkg-query >/dev/null || fail "this is not a Debian system: install by hand: ${packages[*]}"
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} -gt 0 ] || return 0

    echo "setup: installing ${missing[*]}"
    local log=build/setup.log as_root=()
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "installing packages needs root or sudo"
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update >"$log" 2>&1 ||
        echo "setup: apt-get update failed, see $log; going on with the package lists at hand"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1 || true
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} = 0 ] || fail "cannot install ${missing[*]}, see $log: $(grep '^E:' "$log" | head -n 1)"
}

# Wine takes its code page from the locale's name and its file names from the locale itself: C.UTF-8
# under a Chinese name gives both without a package or root.
make_locale() {
    local folder=build/locale/zh_CN.UTF-8
    [ -e "$folder/LC_CTYPE" ] && return 0
    [ -e /usr/lib/locale/C.utf8/LC_CTYPE ] || fail "/usr/lib/locale/C.utf8 is missing (package libc-bin)"
    mkdir -p build/locale
    ln -sfn /usr/lib/locale/C.utf8 "$folder"
}

make_prefix() {
    local prefix=$PWD/build/wineprefix
    if [ -e "$prefix" ]; then
        [ -O "$prefix" ] || fail "$prefix belongs to another user, and Wine refuses it: remove it"
        [ -e "$prefix/.ready" ] && return 0
        rm -rf "$prefix"
    fi
    echo "setup: creating the Wine prefix"
    export WINEPREFIX=$prefix
    local log=build/wineprefix.log
    mkdir -p "$prefix"
    timeout 120 tools/wine.sh wineboot -i >"$log" 2>&1 || fail "wineboot failed, see $log"
    # Real windows without a display.
    timeout 60 tools/wine.sh reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f \
        >>"$log" 2>&1 || fail "writing Wine's registry failed, see $log"
    stop_wine "$prefix"

    # The prefix holds copies of Wine's own files, 600 MB of them.
    local builtin=/usr/lib/x86_64-linux-gnu/wine/x86_64-windows file own
    find "$prefix/drive_c/windows" -type f | while read -r file; do
        own=$builtin/${file##*/}
        if [ -f "$own" ] && cmp -s "$file" "$own"; then ln -sf "$own" "$file"; fi
    done
    # Desktop, documents and the like must not lead out into the user's own folders.
    find "$prefix/drive_c/users" -type l | while read -r file; do
        rm "$file"
        mkdir "$file"
    done
    keep_temp_in_memory "$prefix"
    touch "$prefix/.ready"
}

# Tests make and remove small files by the hundred thousand: half of their time, if on a disk. wine.sh makes
# the folder again that a restart takes away.
keep_temp_in_memory() {
    local temp free
    free=$(df --output=avail -k /dev/shm 2>/dev/null | tail -n 1)
    [ -w /dev/shm ] && [ "${free:-0}" -gt 1000000 ] || return 0
    for temp in "$1"/drive_c/users/*/Temp "$1"/drive_c/users/*/AppData/Local/Temp; do
        [ -d "$temp" ] || continue
        rm -r "$temp"
        ln -s "$(mktemp -d /dev/shm/korvane-XXXXXX)" "$temp"
    done
}

stop_wine() {
    local server
    for server in /usr/lib/wine/wineserver64 /usr/lib/wine/wineserver "$(command -v wineserver || true)"; do
        [ -x "$server" ] || continue
        WINEPREFIX=$1 "$server" -k || true
        WINEPREFIX=$1 "$server" -w || true
        return 0
    done
}

mkdir -p build
exec 9>build/.setup.lock
flock 9
install_packages
make_locale
make_prefix 9>&-
