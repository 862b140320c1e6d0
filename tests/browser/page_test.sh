#!/usr/bin/env bash
# Tries the page of the bill of materials in a real browser: page_test.sh [--picture FILE.png]
#
#   --picture  draws the page of the sample workspace instead
#
# The pages are written by the plug-in that was built; a headless Chromium then sorts, filters, folds, ticks off and
# prints them. Needs a build (tools/build.sh); the browser, its driver and the Python binding are installed when
# they are missing.
set -euo pipefail
cd "$(dirname "$0")/../.."

fail() {
    echo "page_test: FAILED: $*" >&2
    exit 1
}

packages=(chromium chromium-driver python3-selenium fonts-wqy-microhei)

missing() {
    local installed
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
        sed -n 's/ installed$//p' || true)
    for package in "${packages[@]}"; do
        grep -qxF "$package" <<<"$installed" || echo "$package"
    done
}

install_browser() {
    local wanted as_root=()
    mapfile -t wanted < <(missing)
    [ ${#wanted[@]} -gt 0 ] || return 0
    echo "page_test: installing ${wanted[*]}"
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update >build/browser.log 2>&1 || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${wanted[@]}" >>build/browser.log 2>&1 || true
    mapfile -t wanted < <(missing)
    [ ${#wanted[@]} = 0 ] || fail "there is no browser to test with: cannot install ${wanted[*]}, see build/browser.log"
}

repo=$PWD
hostsim=$repo/build/mingw/bin/hostsim.exe
[ -e "$hostsim" ] || fail "no $hostsim; run tools/build.sh"
install_browser

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R build/mingw/korvane "$work/plugin"

# page WORKSPACE MODEL: writes MODEL.html
page() {
    printf 'file "%s.html"\ndialog KvBom\n  choose BomRadio "分层"\n  press KvLoadBom\n  press KvExportPage\n  press Close\n' \
        "$2" >"$work/$2.user"
    (cd "$work" && "$repo/tools/wine.sh" "$hostsim" --plugin plugin run KvBom --workspace "$1" --model "$2" \
        --user "$2.user" >"$2.out" 2>&1) || { tail -n 20 "$work/$2.out" >&2; fail "the plug-in wrote no page of $2"; }
    [ -s "$work/$1/$2.html" ] || { tail -n 20 "$work/$2.out" >&2; fail "the plug-in wrote no page of $2"; }
}

if [ "${1:-}" = --picture ]; then
    cp -R samples/roller_conveyor "$work/sample"
    cp -R KVconfig "$work/plugin"
    page sample roller_conveyor
    /usr/bin/python3 -B tests/browser/page_test.py picture "$work/sample/roller_conveyor.html" "$2"
    exit
fi
/usr/bin/python3 -B tests/browser/page_test.py arrange "$work"
page small pump
page large plant
timeout -k 5 120 /usr/bin/python3 -B tests/browser/page_test.py test "$work/small/pump.html" "$work/large/plant.html" ||
    fail "the page does not do in a browser what it should"
