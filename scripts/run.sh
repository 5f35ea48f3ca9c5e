#!/usr/bin/env bash
# Installs what is missing, builds, and starts the data-entry program on the
# sample database unless arguments say otherwise (they are passed on; try
# --help): the window, varnel-screen, when a display is available ($DISPLAY
# or $WAYLAND_DISPLAY), else the console, varnel. --console forces the console.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
console=no
args=()
for arg in "$@"; do
  if [[ $arg == --console ]]; then console=yes; else args+=("$arg"); fi
done
if [[ -z ${DISPLAY:-} && -z ${WAYLAND_DISPLAY:-} ]]; then
  console=yes
fi
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
if [[ $console == no && -f "$root/apps/screen/main.cpp" ]] &&
   cmake --build "$root/build" -j "$(nproc)" --target varnel_screen; then
  exec "$root/build/apps/screen/varnel-screen" "${args[@]}"
fi
cmake --build "$root/build" -j "$(nproc)" --target varnel_app
exec "$root/build/apps/varnel" "${args[@]}"
