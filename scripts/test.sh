#!/usr/bin/env bash
# Builds and runs every test: the plain suite, then the same suite under
# AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
status=0
for variant in plain sanitize; do
  dir=build
  opts=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
  if [ "$variant" = sanitize ]; then
    dir=build-sanitize
    opts=(-DCMAKE_BUILD_TYPE=Debug -DVARNEL_SANITIZE=ON -DVARNEL_BUILD_BENCH=OFF)
  fi
  echo "== $variant build"
  "$root/scripts/build.sh" "$dir" "${opts[@]}"
  echo "== $variant tests"
  export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
  ctest --test-dir "$root/$dir" --output-on-failure -j "$(nproc)" || status=1
done
exit $status
