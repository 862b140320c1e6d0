#!/usr/bin/env bash
# Draws a workbook's first sheet as a whole: sheet_picture.sh FILE.xlsx PICTURE.png
#
# Needs LibreOffice Calc and pdftoppm (packages libreoffice-calc-nogui, poppler-utils), which setup.sh leaves
# out for their size. Without them it says so and ends with 3.
set -euo pipefail

if [ $# != 2 ]; then
    echo "usage: sheet_picture.sh FILE.xlsx PICTURE.png" >&2
    exit 2
fi
for tool in soffice pdftoppm; do
    command -v $tool >/dev/null && continue
    echo "sheet_picture: no picture: $tool is not installed (apt install libreoffice-calc-nogui poppler-utils)"
    exit 3
done
[ -r "$1" ] || { echo "sheet_picture: cannot read $1" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Under a plain name: the file's own may hold anything.
cp -- "$1" "$work/sheet.xlsx"
one_page='pdf:calc_pdf_Export:{"SinglePageSheets":{"type":"boolean","value":"true"}}'
HOME=$work timeout 120 soffice --headless --convert-to "$one_page" --outdir "$work" \
    "$work/sheet.xlsx" >"$work/log" 2>&1 || true
if [ ! -s "$work/sheet.pdf" ]; then
    echo "sheet_picture: LibreOffice cannot read $1: $(tail -n 1 "$work/log")" >&2
    exit 1
fi
pdftoppm -r 80 -png -singlefile "$work/sheet.pdf" "$work/sheet"
mv "$work/sheet.png" "$2"
