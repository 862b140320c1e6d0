#!/bin/sh
# Runs a Windows program under Wine: wine.sh PROGRAM.exe [ARGUMENT...]
#
# Prints what the program printed and ends with its exit code. WINEPREFIX may name another prefix.

repo=$(cd "$(dirname "$0")/.." && pwd) || exit 1

wine=${KORVANE_WINE:-}
for candidate in /usr/lib/wine/wine64 "$(command -v wine64)" "$(command -v wine)"; do
    [ -n "$wine" ] || { [ -x "$candidate" ] && wine=$candidate; }
done
if [ -z "$wine" ]; then
    echo "wine.sh: Wine is not installed; run tools/setup.sh" >&2
    exit 127
fi

export WINEPREFIX="${WINEPREFIX:-$repo/build/wineprefix}"
for temp in "$WINEPREFIX"/drive_c/users/*/Temp "$WINEPREFIX"/drive_c/users/*/AppData/Local/Temp; do
    [ ! -L "$temp" ] || mkdir -p "$(readlink "$temp")"
done
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml,winedbg.exe=}"
export WINELOADER="$wine"
# A Chinese Windows: code page 936. The locale is C.UTF-8 under that name, made by setup.sh.
export LOCPATH="$repo/build/locale" LC_ALL=zh_CN.UTF-8
unset DISPLAY

# Wine's background processes keep the streams they were started with, so a pipe would stay open for
# seconds after the program's end; and without setarch -R a start fails now and then.
out=$(mktemp) && err=$(mktemp) || exit 1
trap 'rm -f "$out" "$err"' EXIT
# One file for both where both go to the same place, so that their order is kept.
if [ /proc/self/fd/1 -ef /proc/self/fd/2 ]; then
    setarch -R "$wine" "$@" >"$out" 2>&1 </dev/null &
else
    setarch -R "$wine" "$@" >"$out" 2>"$err" </dev/null &
fi
program=$!
trap 'kill "$program" 2>/dev/null' INT TERM HUP
wait "$program"
status=$?
# A signal ends the first wait early; the second one gets the program's own end.
if kill -0 "$program" 2>/dev/null; then wait "$program"; fi

cat "$out"
cat "$err" >&2
exit "$status"
