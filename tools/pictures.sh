#!/bin/sh
# Draws docs/kvparams.png, docs/kvconfig.png and so on: the dialogs as their layout files describe them, at
# twice their size.
#
# Needs a build (tools/build.sh) and a font with Chinese characters, which is installed when there is none.
set -eu
cd "$(dirname "$0")/.."

fail() {
    echo "pictures: error: $*" >&2
    exit 1
}

install_font() {
    [ -z "$(fc-list :lang=zh-cn 2>/dev/null)" ] || return 0
    root=
    [ "$(id -u)" = 0 ] || root=sudo
    $root apt-get update >/dev/null
    $root apt-get install -y --no-install-recommends fontconfig fonts-wqy-microhei >/dev/null
}

command -v rsvg-convert >/dev/null || fail "rsvg-convert is missing; run tools/setup.sh"
hostsim=${1:-build/mingw/bin/hostsim.exe}
[ -e "$hostsim" ] || fail "no $hostsim; run tools/build.sh, or name the program: pictures.sh HOSTSIM.EXE"
install_font

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for dialog in KvParams KvConfig KvBom KvExport; do
    picture=docs/$(echo $dialog | tr '[:upper:]' '[:lower:]').png
    tools/wine.sh "$hostsim" dialog $dialog --svg "$work/$dialog.svg" >/dev/null
    rsvg-convert --zoom=2 --output="$work/$dialog.png" "$work/$dialog.svg"
    mv "$work/$dialog.png" "$picture"
    echo "$picture"
done
