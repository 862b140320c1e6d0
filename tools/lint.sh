#!/usr/bin/env bash
# Checks the format and lints all sources: lint.sh [FILE...]
#
# Each file is linted with clang-tidy, and the plug-in's files are parsed once more the way MSVC would.
# What passed is remembered in build/lint until the file, a header it includes or a rule changes.
# Needs a built preset `mingw`: the build knows which headers a file includes.
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

sources() {
    local folder
    for folder in src simulator tests bench; do
        [ ! -d $folder ] || find $folder -name '*.cpp'
    done | xargs -r ls -S
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

# Our own files that each object was built from: "source header header ...", one source a line.
dependencies() {
    ninja -C $build -t deps 2>/dev/null | awk -v repo="$PWD/" '
        function flush() { if (source != "") print source own; source = own = "" }
        /^[^ ]/ { flush(); next }
        /^ / {
            path = $1
            if (path !~ /^\//) path = repo "'$build'/" path
            if (index(path, repo) != 1) next
            path = substr(path, length(repo) + 1)
            if (path ~ /^build\//) next
            if (source == "") source = path; else own = own " " path
        }
        END { flush() }' | sort -u
}

# What the verdict on a file depends on, as one hash. For a file outside this build: all headers.
key_of() {
    local files
    files=$(awk -v file="$1" '$1 == file { print; exit }' "$cache/dependencies")
    [ -n "$files" ] || files="$1 $(find src simulator tests bench toolkit -name '*.h' 2>/dev/null | sort | xargs)"
    # shellcheck disable=SC2086
    cat $files .clang-tidy ./*/.clang-tidy ./*/*/.clang-tidy tools/lint.sh "$cache/versions" 2>/dev/null | sha256sum | cut -c 1-40
}

lint_file() {
    local file=$1 key log flags=(--extra-arg=-Wno-unknown-warning-option) flag
    key=$(key_of "$file")
    if [ -e "$cache/passed/$key" ]; then return 0; fi
    for flag in --target=x86_64-w64-mingw32 "${includes[@]}"; do flags+=("--extra-arg-before=$flag"); done
    # The analyzer gives up on a function after this many steps; its own limit is six times as high.
    for flag in -Xclang -analyzer-config -Xclang max-nodes=40000; do flags+=("--extra-arg=$flag"); done
    log=$(mktemp)
    if ! clang-tidy-14 --quiet -p $cache "${flags[@]}" "$file" >"$log" 2>&1; then
        echo "lint: $file"
        grep -v -E '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header-filter' "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
    if [[ $file == src/* ]] && ! clang++-14 "${msvc[@]}" "${includes[@]}" "$file" 2>&1; then
        echo "lint: $file does not parse as MSVC reads it"
        return 1
    fi
    : >"$cache/passed/$key"
}

if [ "${1:-}" = --one ]; then
    lint_file "$2"
    exit
fi

for tool in clang-format-14 clang-tidy-14 clang++-14 ninja; do
    command -v $tool >/dev/null || { echo "lint: $tool is missing; run tools/setup.sh" >&2; exit 1; }
done
if [ ! -e $build/compile_commands.json ]; then
    echo "lint: build the preset mingw first: cmake --preset mingw && cmake --build --preset mingw" >&2
    exit 1
fi
mkdir -p $cache/passed
dependencies >$cache/dependencies
# Without the precompiled header: every file has to include what it uses.
sed -E 's/-Winvalid-pch|-include [^ ]*cmake_pch\.hxx//g' $build/compile_commands.json >$cache/compile_commands.json
clang-tidy-14 --version >$cache/versions

if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(sources); fi
failed=0
check_format || failed=1
printf '%s\n' "${files[@]}" | xargs -r -P $jobs -n 1 "$0" --one || failed=1
if [ $failed != 0 ]; then
    echo "lint: failed"
    exit 1
fi
echo "lint: ${#files[@]} files clean"
