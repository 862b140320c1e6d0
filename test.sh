#!/usr/bin/env bash
# Builds everything and runs all checks: test.sh [--quick | --heap]
#
#   (nothing)  tests, the page in a browser, tests of the checked build, the plug-in's exports and imports, lint
#   --quick    without the checked build and lint
#   --heap     without lint
#
# The checked build has library assertions, traps on undefined behaviour and a heap that crashes on
# the first access outside a block.
set -euo pipefail
cd "$(dirname "$0")"

checked=yes lint=yes
shards=4
case "${1:-}" in
    "") ;;
    --quick) checked=no lint=no ;;
    --heap) lint=no ;;
    *) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 2 ;;
esac

passed=0 failed=0 broken=()

step() { printf '\n== %s (%d s so far)\n' "$*" "$SECONDS"; }

build() {
    tools/build.sh "$1" && return 0
    echo "test.sh: FAILED: the build"
    exit 1
}

# Takes the numbers from GoogleTest's own report; a run that broke off has none, and counts what it
# printed and one failure for the test it was in.
count() {
    local report=$1 log=$2 total failures others
    if [ -s "$report" ]; then
        total=$(sed -n 's/^<testsuites tests="\([0-9]*\)".*/\1/p' "$report")
        failures=$(sed -n 's/^<testsuites .*failures="\([0-9]*\)".*/\1/p' "$report")
        others=$(grep -c -E '<testcase .*(status="notrun"|result="skipped")' "$report" || true)
        passed=$((passed + total - failures - others))
        failed=$((failed + failures))
    else
        passed=$((passed + $(grep -c '^\[       OK \]' "$log" || true)))
        failed=$((failed + $(grep -c '^\[  FAILED  \].* ms).\?$' "$log" || true) + 1))
    fi
}

# One of the processes that share the tests of a preset; no test knows of another.
run_shard() {
    local preset=$1 limit=$2 filter=$3 shard=$4 base=build/$1.tests.$4
    rm -f "$base.xml"
    GTEST_TOTAL_SHARDS=$shards GTEST_SHARD_INDEX=$shard timeout -k 10 "$limit" \
        tools/wine.sh "build/$preset/bin/korvane_tests.exe" "--gtest_output=xml:$base.xml" \
        "--gtest_filter=$filter" >"$base.log" 2>&1
}

show_failure() {
    local log=$1 code=$2 limit=$3
    grep -v -E '^\[( +OK |-+|=+| RUN +)\]' "$log" | tail -n 100 || true
    case $code in
        1) ;;
        124) echo "The tests took longer than $limit s and were stopped in:" ;;
        *) echo "The test program broke off with code $code (5 access violation, 29 undefined behaviour," \
            "3 abort) in:" ;;
    esac
    [ "$code" = 1 ] || grep '^\[ RUN' "$log" | tail -n 1 || true
    echo "The whole output is in $log"
}

run_tests() {
    local preset=$1 limit=$2 filter=$3 shard code processes=()
    for ((shard = 0; shard < shards; ++shard)); do
        run_shard "$preset" "$limit" "$filter" "$shard" &
        processes+=($!)
    done
    for ((shard = 0; shard < shards; ++shard)); do
        code=0
        wait "${processes[shard]}" || code=$?
        count "build/$preset.tests.$shard.xml" "build/$preset.tests.$shard.log"
        if [ $code = 0 ]; then
            tail -n 1 "build/$preset.tests.$shard.log"
        else
            broken+=("tests of preset $preset")
            show_failure "build/$preset.tests.$shard.log" "$code" "$limit"
        fi
    done
}

# The host finds these two functions, and no other DLL than Windows' own and the host's is there.
check_plugin() {
    local dump exports imports stranger
    dump=$(x86_64-w64-mingw32-objdump -p build/mingw/korvane/korvane5.1C9.dll)
    exports=$(sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] \(.*\)/\1/p' <<<"$dump" | sort | xargs)
    if [ "$exports" != "user_initialize user_terminate" ]; then
        echo "The plug-in exports: $exports"
        broken+=("exports of the plug-in")
    fi
    imports=$(sed -n 's/^\tDLL Name: //p' <<<"$dump" | tr '[:upper:]' '[:lower:]' | sort -u)
    stranger=$(grep -v -x -E \
        'hostsim\.dll|(kernel32|msvcrt|user32|gdi32|shell32|shlwapi|ole32|oleaut32|advapi32|comdlg32)\.dll' \
        <<<"$imports" || true)
    if [ -n "$stranger" ] || ! grep -qx 'hostsim\.dll' <<<"$imports"; then
        echo "The plug-in imports:" $imports
        broken+=("imports of the plug-in")
    fi
}

step "Set-up"
tools/setup.sh
step "Build"
build mingw
step "Tests"
# The longest sweep runs once: where more is checked.
[ $checked = yes ] && once="-*HostCallsFailInTurn*" || once="*"
run_tests mingw 1500 "$once"
step "Exports and imports of the plug-in"
check_plugin
step "The page of the bill of materials in a browser"
tests/browser/page_test.sh || broken+=("page in a browser")
if [ $checked = yes ]; then
    step "Checked build"
    build mingw-debug
    step "Tests of the checked build"
    # The guarded heap stands where allocations are made to fail; what else is not here has run above.
    run_tests mingw-debug 1500 "-*AllocationsFailInTurn*:*WindowsCallsFailInTurn*:*FunctionsFailForGood*"
fi
if [ $lint = yes ]; then
    step "Lint"
    tools/lint.sh || broken+=("lint")
fi

step "Result"
echo "$passed passed, $failed failed"
if [ ${#broken[@]} -gt 0 ]; then
    printf -v list '%s, ' "${broken[@]}"
    echo "test.sh: FAILED: ${list%, }"
    exit 1
fi
if [ "$passed" = 0 ]; then
    echo "test.sh: FAILED: no test ran"
    exit 1
fi
echo "test.sh: all checks passed in $SECONDS s"
