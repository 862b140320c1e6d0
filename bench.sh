#!/usr/bin/env bash
# Builds and runs the benchmark: bench.sh [ARGUMENT...] hands its arguments on.
set -euo pipefail
cd "$(dirname "$0")"
trap 'echo "bench.sh: FAILED" >&2' ERR

tools/setup.sh
echo "bench.sh: building"
tools/build.sh
tools/wine.sh build/mingw/bin/korvane_bench.exe "$@"
echo "bench.sh: done"
