#!/bin/sh
# Draws docs/kvparams.png, docs/kvconfig.png and so on: the commands' dialogs at work on the sample workspace, at
# twice their size.
#
# tools/pictures/COMMAND.user is played at each command in a copy of the workspace; what its `show` steps draw
# becomes a picture of that name; tools/pictures/settings/COMMAND.user is played at KvConfig before. Needs a build (tools/build.sh) and a font with Chinese characters, which is installed when there is none.
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

hostsim=$(realpath "$hostsim")
repo=$PWD
work=$(mktemp -d)
# The workspace lies on the drive C, for some dialogs show paths.
workspace=${WINEPREFIX:-build/wineprefix}/drive_c/conveyor
trap 'rm -rf "$work" "$workspace"' EXIT
rm -rf "$workspace"
cp -R samples/roller_conveyor "$workspace"
cp -R samples/templates "$workspace"

# play COMMAND SCRIPT
play() {
    cp "$2" "$work/$1.user"
    case $1 in
        KvDimModify | KvSingleDim) model=drive_shaft.drw ;;
        KvRemoveCons) model=drive_unit ;;
        *) model=roller_conveyor ;;
    esac
    (cd "$work" && "$repo/tools/wine.sh" "$hostsim" --plugin plugin run "$1" --workspace "C:\\conveyor" \
        --model "$model" --user "$1.user" >"$work/out" 2>&1) || {
        cat "$work/out" >&2
        fail "$1 cannot be played"
    }
}

for script in tools/pictures/*.user; do
    command=$(basename "$script" .user)
    # Each command begins with the settings that ship.
    rm -rf "$work/plugin"
    cp -R "$(dirname "$hostsim")/../korvane" "$work/plugin"
    cp -R KVconfig "$work/plugin"
    [ ! -e "tools/pictures/settings/$command.user" ] || play KvConfig "tools/pictures/settings/$command.user"
    play "$command" "$script"
done
for drawing in "$work"/*.svg; do
    picture=docs/$(basename "$drawing" .svg).png
    rsvg-convert --zoom=2 --output="$work/picture.png" "$drawing"
    mv "$work/picture.png" "$picture"
    echo "$picture"
done

# What the window shows before and after a display command.
window() {
    name=$1
    shift
    (cd "$work" && "$repo/tools/wine.sh" "$hostsim" --plugin plugin run "$@" --workspace "C:\\conveyor" --model roller_conveyor \
        --picture "$name.svg" >"$work/out" 2>&1) || {
        cat "$work/out" >&2
        fail "$name cannot be drawn"
    }
    rsvg-convert --zoom=1 --output="docs/$name.png" "$work/$name.svg"
    echo "docs/$name.png"
}
printf 'pick base_frame path 2\n' >"$work/transparent.user"
printf 'answer yes\n' >"$work/colours.user"
window display_before KvShowAllComp
window display_after KvIsolate --select "drive_unit path 11"
window display_transparent KvTransparent --user transparent.user
window display_colours BatchColor --user colours.user
