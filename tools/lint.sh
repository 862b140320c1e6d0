#!/usr/bin/env bash
# Checks the format and lints all sources, or the folders of some: lint.sh [FILE...]
#
# What the build compiles as one is linted as one with clang-tidy, for reading the standard headers takes
# longer than all that follows. The plug-in's files are parsed once more, each alone, the way MSVC would.
# What passed is remembered in build/lint until a file, a header it includes or a rule changes. Needs a built
# preset `mingw`: the build knows which headers a file includes.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/mingw
cache=build/lint
jobs=2

gcc=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++
includes=(
    -nostdinc++ -nostdlibinc
    -isystem "$gcc" -isystem "$gcc/x86_64-w64-mingw32" -isystem "$gcc/backward"
    -isystem /usr/x86_64-w64-mingw32/include
)
# MinGW's headers, but the language as MSVC has it.
msvc=(
    --target=x86_64-pc-windows-msvc -fms-compatibility-version=19.30 -fno-ms-compatibility
    -D__MINGW32__ -D__MINGW64__ -U__GNUC__ -U__GNUC_MINOR__ -D__GNUC__=12 -D__GNUC_MINOR__=2
    -D__declspec=__declspec
    -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wgnu -Wshorten-64-to-32 -Werror
    -Isrc -isystem toolkit/include
)

# What is linted as one, "unit file file ...", one unit a line, the longest first: the build's own file that
# includes the files of a folder, or a file that no such file includes.
units() {
    local unit
    for unit in "$PWD"/$build/CMakeFiles/*/Unity/*.cxx; do
        printf '%s ' "$unit"
        sed -n "s,^#include \"$PWD/\(.*\)\".*,\1,p" "$unit" | xargs
    done >$cache/folders
    find src simulator tests bench -name '*.cpp' | grep -v -x -F -f <(cut -d ' ' -f 2- $cache/folders | tr ' ' '\n') |
        sed 's/.*/& &/' | cat $cache/folders - | awk '{ print length($0), $0 }' | sort -rn | cut -d ' ' -f 2-
}

check_format() {
    local folders=()
    for folder in src simulator tests bench toolkit; do
        [ ! -d $folder ] || folders+=("$folder")
    done
    local bad
    bad=$(find "${folders[@]}" -name '*.cpp' -o -name '*.h' | sort |
        xargs -r -P $jobs -n 20 clang-format-14 --dry-run -Werror 2>&1 |
        sed -n 's/^\([^ :]*\):[0-9]*:[0-9]*: error:.*/\1/p' | uniq)
    [ -n "$bad" ] || return 0
    echo "lint: not formatted; run: clang-format-14 -i" $bad
    return 1
}

# The script and the style of the page. What Debian's tools need lies where its own Node.js looks.
check_page() {
    local page=src/bom/page bad=0 tool file
    export NODE_PATH=/usr/share/nodejs:/usr/lib/nodejs
    eslint --format unix $page/bom_page.js || bad=1
    for file in $page/bom_page.js $page/bom_page.css; do
        tool=js-beautify
        [[ $file == *.js ]] || tool=css-beautify
        $tool --end-with-newline --file $file 2>/dev/null | cmp -s - $file && continue
        echo "lint: not formatted; run: $tool --end-with-newline --replace $file"
        bad=1
    done
    return $bad
}

# Our own files that each unit was built from: "unit file file ...", one unit a line.
dependencies() {
    ninja -C $build -t deps 2>/dev/null | awk -v repo="$PWD/" '
        function flush() { if (unit != "") print unit own; unit = own = "" }
        /^[^ ]/ { flush(); next }
        /^ / {
            path = $1
            if (path !~ /^\//) path = repo "'$build'/" path
            if (unit == "") unit = path
            if (index(path, repo) == 1) own = own " " substr(path, length(repo) + 1)
        }
        END { flush() }' | sort -u
}

# What the verdict on a unit depends on, as one hash. For one outside this build: all sources.
key_of() {
    local files
    files=$(awk -v unit="$1" '$1 == unit { $1 = ""; print; exit }' "$cache/dependencies")
    [ -n "$files" ] || files=$(find src simulator tests bench toolkit -name '*.h' -o -name '*.cpp' 2>/dev/null | sort)
    # shellcheck disable=SC2086
    cat $files .clang-tidy ./*/.clang-tidy ./*/*/.clang-tidy tools/lint.sh "$cache/versions" 2>/dev/null | sha256sum | cut -c 1-40
}

# Lints a unit by the rules for the first file in it.
lint_unit() {
    local unit=$1 file key log flags=(--extra-arg=-Wno-unknown-warning-option) flag
    shift
    key=$(key_of "$unit")
    if [ -e "$cache/passed/$key" ]; then return 0; fi
    for flag in --target=x86_64-w64-mingw32 "${includes[@]}"; do flags+=("--extra-arg-before=$flag"); done
    # The analyzer gives up on a function after this many steps; its own limit is six times as high.
    for flag in -Xclang -analyzer-config -Xclang max-nodes=40000; do flags+=("--extra-arg=$flag"); done
    # It prints settings that it does not read. And it takes long over the standard library's reserved names:
    # one of ours is told by a warning of the compiler's.
    flags+=("--extra-arg=-Wreserved-identifier" "--config=$(clang-tidy-14 --dump-config "$1" 2>/dev/null |
        sed "/HungarianPrefix/,+1d; /^\.\.\.$/d;
            /naming.*IgnoredRegexp/{n; s/''/'_[_A-Z].*'/; t; s/'\$/|_[_A-Z].*'/}")")
    log=$(mktemp)
    if ! clang-tidy-14 --quiet -p $build "${flags[@]}" "$unit" >"$log" 2>&1; then
        echo "lint: $*"
        grep -v -E '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header-filter' "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
    for file; do
        if [[ $file == src/* ]] && ! clang++-14 "${msvc[@]}" "${includes[@]}" "$file" 2>&1; then
            echo "lint: $file does not parse as MSVC reads it"
            return 1
        fi
    done
    : >"$cache/passed/$key"
}

if [ "${1:-}" = --one ]; then
    shift
    lint_unit "$@"
    exit
fi

for tool in clang-format-14 clang-tidy-14 clang++-14 ninja eslint js-beautify css-beautify; do
    command -v $tool >/dev/null || { echo "lint: $tool is missing; run tools/setup.sh" >&2; exit 1; }
done
if [ ! -e $build/compile_commands.json ]; then
    echo "lint: build the preset mingw first: cmake --preset mingw && cmake --build --preset mingw" >&2
    exit 1
fi
mkdir -p $cache/passed
dependencies >$cache/dependencies
clang-tidy-14 --version >$cache/versions
units >$cache/units
if [ $# -gt 0 ]; then
    printf ' %s\n' "$@" >$cache/wanted
    sed 's/$/ /' $cache/units | grep -F -f <(sed 's/$/ /' $cache/wanted) | sed 's/ *$//' >$cache/chosen || true
    mv $cache/chosen $cache/units
fi

failed=0
check_format || failed=1
check_page || failed=1
xargs -r -P $jobs -L 1 "$0" --one <$cache/units || failed=1
if [ $failed != 0 ]; then
    echo "lint: failed"
    exit 1
fi
echo "lint: $(cut -d ' ' -f 2- $cache/units | wc -w) files clean"
