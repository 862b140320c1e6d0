#!/bin/sh
# Renders the icons in the host's two sizes: render_icons.sh SRC_DIR OUT_DIR
#
# NAME.svg becomes NAME.png (16x16) and NAME_large.png (32x32). What is newer than its source is kept.
set -eu

fail() {
    echo "render_icons: error: $*" >&2
    exit 1
}

# render SVG PNG SIZE; goes through a second file, so that a failure leaves nothing that looks finished.
render() {
    [ ! -e "$2" ] || [ -z "$(find "$2" -newer "$1")" ] || return 0
    rsvg-convert --width="$3" --height="$3" --output="$2.part" "$1" || fail "cannot render $1"
    mv "$2.part" "$2"
}

[ $# = 2 ] || fail "usage: render_icons.sh SRC_DIR OUT_DIR"
command -v rsvg-convert >/dev/null || fail "rsvg-convert is missing (package librsvg2-bin)"
[ -d "$1" ] || fail "no folder $1"
mkdir -p "$2"

for source in "$1"/*.svg; do
    [ -e "$source" ] || fail "no SVG files in $1"
    name=$(basename "$source" .svg)
    render "$source" "$2/$name.png" 16
    render "$source" "$2/${name}_large.png" 32
done
