#!/usr/bin/env bash
# build.sh DIR [cmake options...]: configures (once) and builds the project into DIR.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=$1; shift
# ccache shares object files between build folders and work trees of the same sources.
launcher=()
if command -v ccache >/dev/null; then
  export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=1
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S "$root" -B "$root/$dir" -G Ninja "${launcher[@]}" "$@" >/dev/null
cmake --build "$root/$dir" -j "$(nproc)"
