#!/usr/bin/env bash
# Configures and builds a preset: build.sh [PRESET]. Prints only what went wrong.
set -uo pipefail
cd "$(dirname "$0")/.."

preset=${1:-mingw}
log=build/$preset.log
mkdir -p build
if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    grep -E -A 6 'error:|Error|FAILED:|undefined reference' "$log" | head -n 80 || tail -n 20 "$log"
    echo "build: preset $preset does not build, see $log" >&2
    exit 1
fi
