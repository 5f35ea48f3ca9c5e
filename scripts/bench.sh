#!/usr/bin/env bash
# bench.sh NAME [arguments...]: builds bench_NAME optimised (RelWithDebInfo, in
# build-bench/) and runs it with the arguments. Generated tables are cached in
# build/bench-data and shared by every benchmark.
#   scripts/bench.sh load                  # 1,000,000 rows, ratios to the sqlite3 loop
#   scripts/bench.sh load --rows 100000 --repeat 5
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
name=${1:?usage: scripts/bench.sh NAME [arguments...]}
shift
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build-bench" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVARNEL_BUILD_TESTS=OFF -DVARNEL_BUILD_APPS=OFF -DVARNEL_BUILD_BENCH=ON >/dev/null
cmake --build "$root/build-bench" -j "$(nproc)" --target "bench_$name"
export VARNEL_BENCH_DATA=${VARNEL_BENCH_DATA:-$root/build/bench-data}
exec "$root/build-bench/bench/bench_$name" "$@"
