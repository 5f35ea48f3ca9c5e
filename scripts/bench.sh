#!/usr/bin/env bash
# bench.sh NAME [arguments...]: builds bench_NAME optimised (RelWithDebInfo, in
# build-bench/) and runs it with the arguments. Generated tables are cached in
# build/bench-data and shared by every benchmark. Each program ends with its
# ratios to a reference measured in the same run, each with its target.
#   scripts/bench.sh all                   # every benchmark below, then every ratio again
#   scripts/bench.sh editing               # single-row work, 1,000,000 / 10,000 rows
#   scripts/bench.sh evaluate              # Qty*Price over 1,000,000 rows / a plain loop
#   scripts/bench.sh load                  # 1,000,000 rows, ratios to the sqlite3 loop
#   scripts/bench.sh load --rows 100000 --repeat 5
#   scripts/bench.sh load_postgres         # 1,000,000 rows, ratio to a plain libpq loop
# load_postgres uses the server of VARNEL_TEST_PG, or starts a throwaway one
# (scripts/pg-server.sh) for the run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
name=${1:?usage: scripts/bench.sh NAME|all [arguments...]}
shift
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build-bench" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVARNEL_BUILD_TESTS=OFF -DVARNEL_BUILD_APPS=OFF -DVARNEL_BUILD_BENCH=ON >/dev/null
export VARNEL_BENCH_DATA=${VARNEL_BENCH_DATA:-$root/build/bench-data}

need_server() {
  [ -z "${VARNEL_TEST_PG:-}" ] || return 0
  server_dir=$(mktemp -d /tmp/varnel-bench-pg.XXXXXX)
  chmod 711 "$server_dir"
  trap 'bash "$root/scripts/pg-server.sh" stop "$server_dir/pg"; rm -rf "$server_dir"' EXIT
  VARNEL_TEST_PG=$(bash "$root/scripts/pg-server.sh" start "$server_dir/pg")
  export VARNEL_TEST_PG
}

if [ "$name" = all ]; then
  programs=(editing evaluate load load_postgres)
  cmake --build "$root/build-bench" -j "$(nproc)" --target "${programs[@]/#/bench_}"
  need_server
  log=$(mktemp)
  status=0
  for program in "${programs[@]}"; do
    echo "== $program"
    "$root/build-bench/bench/bench_$program" | tee -a "$log" || status=1
  done
  echo "== every ratio, with its target"
  grep -E 'target|equal a recount|^(InitDataSource|U_Auto)' "$log"
  rm -f "$log"
  exit $status
fi
cmake --build "$root/build-bench" -j "$(nproc)" --target "bench_$name"
if [ "$name" = load_postgres ]; then
  need_server
  "$root/build-bench/bench/bench_$name" "$@"
  exit
fi
exec "$root/build-bench/bench/bench_$name" "$@"
