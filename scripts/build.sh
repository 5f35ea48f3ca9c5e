#!/usr/bin/env bash
# build.sh DIR [cmake options...]: configures (once) and builds the project into DIR.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=$1; shift
cmake -S "$root" -B "$root/$dir" -G Ninja "$@" >/dev/null
cmake --build "$root/$dir" -j "$(nproc)"
