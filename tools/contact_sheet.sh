#!/bin/sh
# Draws docs/icons.png: every command's icon in menu order, at 32 and 16 pixels and the small one enlarged.
#
# Order and names come from the command table; a row without an icon or an icon without a row is an error.
set -eu
cd "$(dirname "$0")/.."

columns=9
cellWidth=168
cellHeight=84

fail() {
    echo "contact_sheet: error: $*" >&2
    exit 1
}

# "command icon" for each row of the command table.
rows() {
    cat src/host/*.h src/host/*.cpp |
        sed -n 's/^ *{ *"\([A-Za-z]*\)",.*"\([A-Za-z]*\)\.png".*/\1 \2/p'
}

check_rows() {
    [ -s "$work/rows" ] || fail "no command rows found in src/host"
    for icon in icons/*.svg; do
        name=$(basename "$icon" .svg)
        grep -q " $name\$" "$work/rows" || fail "no command uses $icon"
    done
    while read -r command icon; do
        [ -e "icons/$icon.svg" ] || fail "$command has no icon: icons/$icon.svg is missing"
    done <"$work/rows"
}

# place FILE SIZE DX DY: one picture in the cell whose corner is x, y.
place() {
    echo "<image xlink:href='$1' width='$2' height='$2' x='$((x + $3))' y='$((y + $4))'/>"
}

# cells FUNCTION: calls it with command, icon, x and y set for each row.
cells() {
    index=0
    while read -r command icon; do
        x=$((index % columns * cellWidth))
        row=$((index / columns))
        y=$((row * cellHeight))
        "$1"
        index=$((index + 1))
    done <"$work/rows"
}

icon_and_name() {
    place "${icon}_large.png" 32 12 15
    place "$icon.png" 16 54 23
    echo "<text x='$((x + 12))' y='$((y + 70))'>$command</text>"
}

enlarged_icon() {
    place "$icon.png" 48 84 6
}

# Enlarging blurs, but the middle of each 3x3 block keeps its pixel's colour. The filter picks the middles
# and spreads each over its block; cells and pictures stand on multiples of 3 for that.
sheet() {
    count=$(wc -l <"$work/rows")
    lines=$(((count + columns - 1) / columns))
    cat <<END
<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink"
     width="$((columns * cellWidth))" height="$((lines * cellHeight))">
<filter id="blocks" filterUnits="userSpaceOnUse" x="0" y="0" width="100%" height="100%"
        color-interpolation-filters="sRGB">
<feFlood x="1" y="1" width="1" height="1"/>
<feOffset x="0" y="0" width="3" height="3"/>
<feTile result="middles"/>
<feComposite in="SourceGraphic" in2="middles" operator="in"/>
<feMorphology operator="dilate" radius="1"/>
</filter>
<rect width="100%" height="100%" fill="#fff"/>
<g font-family="DejaVu Sans, sans-serif" font-size="12">
END
    cells icon_and_name
    echo '</g><g filter="url(#blocks)">'
    cells enlarged_icon
    echo '</g></svg>'
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
rows >"$work/rows"
check_rows

tools/render_icons.sh icons "$work"
sheet >"$work/sheet.svg"
mkdir -p docs
rsvg-convert --output=docs/icons.png "$work/sheet.svg"
