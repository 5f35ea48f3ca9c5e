#!/usr/bin/env bash
# Installs what is missing, builds, and starts the main program, varnel: the
# data-entry console, on the sample database unless arguments say otherwise
# (they are passed on; try --help).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j "$(nproc)" --target varnel_app
exec "$root/build/apps/varnel" "$@"
