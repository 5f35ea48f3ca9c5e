#!/usr/bin/env bash
# bench.sh NAME [arguments...]: builds bench_NAME optimised (RelWithDebInfo, in
# build-bench/) and runs it with the arguments. Generated tables are cached in
# build/bench-data and shared by every benchmark. Each program ends with its
# ratios to a reference measured in the same run, each with its target.
#   scripts/bench.sh all                   # editing, evaluate and load, one after another
#   scripts/bench.sh load                  # 1,000,000 rows, ratios to the sqlite3 loop
#   scripts/bench.sh load --rows 100000 --repeat 5
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
name=${1:?usage: scripts/bench.sh NAME|all [arguments...]}
shift
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build-bench" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVARNEL_BUILD_TESTS=OFF -DVARNEL_BUILD_APPS=OFF -DVARNEL_BUILD_BENCH=ON >/dev/null
export VARNEL_BENCH_DATA=${VARNEL_BENCH_DATA:-$root/build/bench-data}
if [ "$name" = all ]; then
  cmake --build "$root/build-bench" -j "$(nproc)" --target bench_editing bench_evaluate bench_load
  for program in editing evaluate load; do
    echo "== $program"
    "$root/build-bench/bench/bench_$program"
  done
  exit 0
fi
cmake --build "$root/build-bench" -j "$(nproc)" --target "bench_$name"
exec "$root/build-bench/bench/bench_$name" "$@"
