#!/usr/bin/env bash
# Builds and runs every test: the plain suite, then the same suite under
# AddressSanitizer and UndefinedBehaviorSanitizer. The database suites run on
# SQLite and on a throwaway PostgreSQL server started here (its connection
# string in VARNEL_TEST_PG) and stopped on the way out, whatever happens; if
# it cannot be started, the run fails with the reason.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"

# The server runs as its own user, who must be able to reach its folder.
pg_parent=$(mktemp -d)
chmod 711 "$pg_parent"
pg_dir="$pg_parent/pg"
stop_pg() {
  "$root/scripts/pg-server.sh" stop "$pg_dir" >/dev/null 2>&1 || true
  rm -rf "$pg_parent"
}
trap stop_pg EXIT
trap 'exit 130' INT TERM
echo "== PostgreSQL server for the tests"
if ! VARNEL_TEST_PG=$("$root/scripts/pg-server.sh" start "$pg_dir"); then
  echo "test: the PostgreSQL server for the tests could not be started (reason above)" >&2
  exit 1
fi
export VARNEL_TEST_PG

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
