#!/usr/bin/env bash
# Builds the plug-in and the host simulator and shows a few commands at work: demo.sh [FOLDER]
#
# The commands run in a fresh copy of samples/, made in FOLDER (default build/demo).
set -euo pipefail
start=$PWD
cd "$(dirname "$0")"
repo=$PWD
trap 'echo "demo.sh: FAILED" >&2' ERR

workspace=$repo/build/demo
if [ $# -gt 0 ]; then
    workspace=$(cd "$start" && realpath -m "$1")
    if [ -e "$workspace" ]; then
        echo "demo.sh: $workspace exists already; name a new folder" >&2
        exit 2
    fi
fi

tools/setup.sh
echo "demo.sh: building"
tools/build.sh
rm -rf "$repo/build/demo"
mkdir -p "$workspace"
cp -R samples/. "$workspace/"

# ---- The steps, one after another in the workspace: tools/demo_steps.sh WORKSPACE HOSTSIM...
if [ -x tools/demo_steps.sh ]; then
    tools/demo_steps.sh "$workspace" "$repo/tools/wine.sh" "$repo/build/mingw/bin/hostsim.exe"
fi
# ----

echo "demo.sh: done; the workspace is $workspace"
