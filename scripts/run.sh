#!/usr/bin/env bash
# Installs what is missing, builds, and starts the main program (arguments are passed on).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh" build -DCMAKE_BUILD_TYPE=RelWithDebInfo
exec "$root/build/examples/varnel_tour" "$@"
